// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class ircuser;

/// What goes out, and when, from the moment that we want a connection until the server has welcomed us (RFC 1459,
/// 4.1), and how far we are.
class registration
{
public:
    enum class stage { idle, connecting, registering, welcomed };

    stage reached() const { return m_stage; }

    /// The socket is asked for a connection.
    void connecting() { m_stage = stage::connecting; }
    /// The connection stands: the lines that go out now. `channels` may be empty.
    QStringList begin(const ircuser &identity, const QString &server, const QStringList &channels);
    /// A welcome (001) has come. False if it is not the first one of this connection.
    bool welcome();
    /// The connection has ended.
    void end() { m_stage = stage::idle; }

private:
    stage m_stage = stage::idle;
};
