// SPDX-License-Identifier: MIT
#pragma once

#include "casemapping.h"

#include <QString>

/// One person on IRC, or the server that a line's prefix names.
///
/// Two users are the same when their nicks are, whatever the case, which `names` says how to ignore; the rest of the mask
/// takes no part.
class ircuser
{
public:
    ircuser() = default;

    /// Splits a mask nick "!" user "@" host (RFC 1459, 2.3.1); a leading ":" is dropped. Without a "!" all of
    /// it is the nick, as in the prefix of a server. Without an "@" behind the "!" the host stays null.
    explicit ircuser(QString mask, casemapping names = casemapping::unicode);

    QString nick() const { return m_nick; }
    QString user() const { return m_user; }
    QString host() const { return m_host; }
    QString realname() const { return m_realname; }
    /// The nick in lower case, stored because every comparison of users needs it.
    const QString &key() const { return m_key; }

    void setNick(const QString &nick, casemapping names = casemapping::unicode);
    void setUser(const QString &user) { m_user = user; }
    void setHost(const QString &host) { m_host = host; }
    void setRealname(const QString &realname) { m_realname = realname; }

    friend bool operator==(const ircuser &a, const ircuser &b) { return a.m_key == b.m_key; }
    friend bool operator<(const ircuser &a, const ircuser &b) { return a.m_key < b.m_key; }

private:
    QString m_nick;
    QString m_user;
    QString m_host;
    QString m_realname;
    QString m_key;
};
Q_DECLARE_TYPEINFO(ircuser, Q_RELOCATABLE_TYPE);
