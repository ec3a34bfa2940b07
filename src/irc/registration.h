// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class ircuser;

/// The way to a welcome from the server (RFC 1459, 4.1): the stage that we have reached, and the lines to
/// send.
class registration
{
public:
    enum class stage { idle, connecting, registering, welcomed };

    stage reached() const { return m_stage; }

    /// The socket begins to connect.
    void connecting() { m_stage = stage::connecting; }
    /// The socket is connected. Returns the lines to send; `channels` may be empty.
    QStringList begin(const ircuser &identity, const QString &server, const QStringList &channels);
    /// A welcome (001) was received. False if it is not the first one of this connection.
    bool welcome();
    /// The connection has ended.
    void end() { m_stage = stage::idle; }

private:
    stage m_stage = stage::idle;
};
