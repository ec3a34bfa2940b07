// SPDX-License-Identifier: MIT
#pragma once

#include "ircuser.h"

/// Something that happened on IRC, known before anyone shows it. What follows from it, such as the activity of a tab,
/// is a function of it.
///
/// Inside of a QObject say `struct event`: there the name is that of QObject::event().
struct event
{
    enum class kind { message, action, notice, join, part, quit, kick, nick, mode, reply, disconnect };

    kind what = kind::reply;
    /// Who did or said it; without a nick if nobody did.
    ircuser who;
    /// The channel or nick that it was said to or done in; empty where it concerns no single one.
    QString where;
    /// What was said, the reason that was given, or the new nick, with its control codes.
    QString text;
    /// Milliseconds since 1970, UTC.
    qint64 when = 0;
    /// It was kept for us and comes late: it is no news.
    bool old = false;
    /// It is our own doing.
    bool ours = false;
    /// It was said to us alone, or says our nick. Never true of what is ours.
    bool forUs = false;

    /// Whether a person said something.
    bool isTalk() const { return what == kind::message || what == kind::action || what == kind::notice; }
};
