// SPDX-License-Identifier: MIT
#pragma once

#include "ircuser.h"

/// Something that happened on IRC. It is made before anything is shown, so whatever depends on it, such as
/// the activity of a tab, can be a function of it.
///
/// Inside a QObject write `struct event`, because `event` is QObject::event() there.
struct event
{
    enum class kind { message, action, notice, join, part, quit, kick, nick, mode, reply, disconnect };

    kind what = kind::reply;
    /// Who did or said it; without a nick if nobody did.
    ircuser who;
    /// The channel or nick that it was sent to; empty if it concerns no single one.
    QString where;
    /// What was said, the reason that was given, or the new nick, with its control codes.
    QString text;
    /// Milliseconds since 1970, UTC.
    qint64 when = 0;
    /// It was kept for us and comes late: it is no news.
    bool old = false;
    /// An ignored person did it: it is not shown. Who is in a channel may change all the same.
    bool ignored = false;
    /// We did it ourselves.
    bool ours = false;
    /// It was sent to us alone, or contains our nick or a word that the user listens for. False if `ours` is true.
    bool forUs = false;

    /// Whether a person said something.
    bool isTalk() const { return what == kind::message || what == kind::action || what == kind::notice; }
};
