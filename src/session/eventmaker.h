// SPDX-License-Identifier: MIT
#pragma once

#include "event.h"

#include <QDateTime>

class connection;
class ircmessage;
class ircmode;

/// Makes the event for what happens now, before it is shown: who did it, when, and what it is to us.
class eventmaker
{
public:
    /// `conn` knows who we are; it must outlive this.
    explicit eventmaker(const connection &ofSession) : conn(ofSession) {}

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

    const connection &conn;
};
