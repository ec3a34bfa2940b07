// SPDX-License-Identifier: MIT
#pragma once

#include "capnegotiation.h"
#include "linkfault.h"
#include "nickchoice.h"

#include <QStringList>

class ircmessage;
class ircuser;
struct destination;

/// What goes out, and when, from the moment that we want a connection until the server has welcomed us (RFC 1459, 4.1;
/// IRCv3, capability-negotiation), and how far we are.
class registration
{
public:
    enum class stage { idle, connecting, registering, welcomed };

    stage reached() const { return m_stage; }

    /// The socket begins to connect.
    void connecting() { m_stage = stage::connecting; }
    /// The socket is connected. Returns the lines to send; `channels` may be empty.
    QStringList begin(const ircuser &identity, const QString &server, const QStringList &channels);
    /// The same for a session by address, which joins later. `maxNick` is what an earlier connection to this host has told
    /// of the length of nicks, or 0.
    QStringList begin(const ircuser &identity, const destination &to, bool encrypted, int maxNick);

    /// A line of the server in a session by address: what to answer.
    QStringList receive(const ircmessage &message);
    /// Whether a reply says that a nick cannot be ours (RFC 2812, 5.2).
    static bool refusesNick(const QString &command);
    /// Why this cannot become a registration; of no kind while it can.
    linkfault fault() const;
    /// No answer to our login has come for too long.
    void timeOut() { negotiation.timeOut(); }
    bool isLoggingIn() const { return negotiation.isLoggingIn(); }
    const stsoffer &sts() const { return negotiation.sts(); }

    /// A welcome (001) has come. False if it is not the first one of this connection.
    bool welcome();

    /// The nick that was asked for first; empty in a classic session.
    QString firstNick() const { return nicks.first(); }
    /// What the user is told about a `nick` that is not the one that was asked for first; empty if nothing.
    QString nickNote(const QString &nick) const;

private:
    stage m_stage = stage::idle;
    capnegotiation negotiation;
    nickchoice nicks;
    /// What the server said of the first nick: 432, 433 or nothing yet.
    QString firstRefusal;
    linkfault refusal;
};
