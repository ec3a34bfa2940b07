// SPDX-License-Identifier: MIT
#pragma once

#include "stspolicy.h"

#include <QMap>
#include <QStringList>

class ircmessage;

/// Which capabilities a server and we use, and how we log in to an account (IRCv3, capability-negotiation and
/// sasl-3.2), from the first line of a connection to its end.
///
/// It knows no socket and no clock: receive() is given the server's lines and returns ours, and the caller looks
/// at result() after each.
class capnegotiation
{
public:
    /// With what to log in. Nothing in it: no login.
    struct credentials
    {
        QString account;
        QString password;
        /// The link shows a certificate of ours, which names the account (SASL EXTERNAL).
        bool byCertificate = false;
    };

    enum class outcome : quint8 {
        /// There is more to negotiate.
        open,
        /// Registration goes on, logged in where there was something to log in with.
        done,
        /// The server does not take the credentials.
        refused,
        /// It offers no login, or none of a kind that we know.
        noMechanism,
        /// It does, but there is no answer to be had.
        silent,
        /// It wants us to come with TLS, to the port of sts().
        upgrade,
    };

    capnegotiation() = default;
    capnegotiation(credentials login, bool encrypted);

    /// The line to begin a connection with.
    static QString begin();
    /// Takes a line of the server, of whatever kind, and returns what to answer.
    QStringList receive(const ircmessage &message);
    /// No answer to our login has come for too long.
    void timeOut();

    outcome result() const { return m_result; }
    /// Whether the next answer must come from the login service, which may be away.
    bool isLoggingIn() const { return m_result == outcome::open && !mechanism.isEmpty(); }
    bool isEnabled(const QString &capability) const { return enabled.contains(capability); }
    /// What the server has offered last in "sts". It counts only on the link for which it is meant.
    const stsoffer &sts() const { return m_sts; }

private:
    QStringList handleCap(const ircmessage &message);
    void list(const QStringList &capabilities);
    /// Asks for what is offered and not yet ours.
    QStringList request();
    QStringList acknowledged(const QStringList &capabilities);
    QStringList rejected();
    void withdrawn(const QStringList &capabilities);
    /// Goes on when the server has answered all that was asked.
    QStringList logIn();
    QStringList authenticate(const QString &challenge);
    QStringList finish(outcome how);
    /// The mechanism to log in with; empty when the server has none for us.
    QString chooseMechanism() const;
    bool wantsLogin() const { return !login.account.isEmpty() || login.byCertificate; }

    credentials login;
    bool encrypted = false;
    /// What is offered of what we use, with its values.
    QMap<QString, QString> offered;
    QStringList enabled;
    /// What was asked for, an entry for each line, and not yet answered.
    QList<QStringList> asked;
    stsoffer m_sts;
    /// With which we are logging in, or have.
    QString mechanism;
    bool credentialsSent = false;
    outcome m_result = outcome::open;
};
