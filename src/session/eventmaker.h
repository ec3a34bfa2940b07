// SPDX-License-Identifier: MIT
#pragma once

#include "event.h"

#include <QDateTime>

class connection;
class ignorelist;
class ircmessage;
class ircmode;
struct preferences;

/// Makes the event for what happens now, before it is shown: who did it, when, and what it is to us.
class eventmaker
{
public:
    /// The connection knows who we are, the preferences which words the user listens for, the list who is ignored. All must
    /// outlive this.
    eventmaker(const connection &ofSession, const preferences &ofUser, const ignorelist &unwanted)
        : conn(ofSession), prefs(ofUser), ignored(unwanted)
    {
    }

    /// What nobody on IRC did.
    static event make(event::kind what);
    /// What a line of the server tells; `text` is what was said.
    event make(event::kind what, const ircmessage *msg, const QString &text = {}) const;
    event make(const ircmode &change) const;

    /// Whether a message is sent to us alone, and whether its sender is us.
    bool addressedToMe(const ircmessage *msg) const;
    bool sentByMe(const ircmessage *msg) const;

private:
    /// `said` is when the line says that it happened; it may say nothing.
    event make(event::kind what, const ircuser &who, const QDateTime &said) const;

    /// Whether a text has our nick in it, or a word that the user listens for.
    bool isForUs(const QString &text) const;

    const connection &conn;
    const preferences &prefs;
    const ignorelist &ignored;
};
