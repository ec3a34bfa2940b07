// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractSocket>
#include <QString>

/// Why a session by address has no connection: what the user is told, and whether to try again.
struct linkfault
{
    enum class kind {
        none,
        // No connection stands.
        noHost,
        refused,
        noAnswer,
        noTls,
        outdatedTls,
        noTlsInQt,
        // The certificate of the server.
        pinChanged,
        untrusted,
        otherName,
        expired,
        notYetValid,
        // What we have to log in with, and what the server says of it.
        badCertificateFile,
        passwordNeedsTls,
        noPassword,
        loginRefused,
        noMechanism,
        silentServices,
        noNickLeft,
        serverRefuses,
        noWelcome,
        // A connection stood.
        dead,
        lost,
        quit,
    };

    linkfault() = default;
    explicit linkfault(kind what, const QString &host = {}, quint16 port = 0, QString detail = {});

    /// Whether the user may decide to trust the certificate all the same.
    bool mayBeTrusted() const { return what == kind::pinChanged || what == kind::untrusted; }

    /// What an error of a plain socket means before the connection stands.
    static kind kindOf(QAbstractSocket::SocketError error);

    kind what = kind::none;
    /// For the user; may be empty.
    QString text;
    /// A fingerprint, an account, a file or what the server said, as the kind has it.
    QString detail;
    /// Whether it may be gone after a while. A refused certificate, login or nick will not be.
    bool passes = false;
};
