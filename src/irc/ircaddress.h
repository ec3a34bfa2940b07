// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// Where a session by address goes: ircs://[account@]host[:port][/channel[,channel…]] with TLS, irc:// without.
///
/// A plain host name is no address, and the classic session that it gives is not described here. A value: it
/// opens nothing and looks no name up.
class ircaddress
{
public:
    /// No address.
    ircaddress() = default;
    /// Reads `text`; error() says what is wrong with it.
    explicit ircaddress(const QString &text);

    /// Whether `text` is meant to be an address, right or wrong: it begins with irc:// or ircs://.
    static bool isMeant(const QString &text);

    /// What is wrong with `text` if it is meant to be an address; empty for a plain host name.
    static QString errorOf(const QString &text)
    {
        return isMeant(text) ? ircaddress(text).error() : QString();
    }

    bool isValid() const { return !m_host.isEmpty(); }
    /// For the user; empty when the address is valid or nothing was read.
    QString error() const { return m_error; }

    bool isEncrypted() const { return encrypted; }
    /// In lower case: a name in its ASCII form (IDNA), an IPv4 address, or an IPv6 address without brackets.
    QString host() const { return m_host; }
    /// Whether the host is this machine: 127.0.0.0/8, ::1 or "localhost".
    bool isLoopback() const;
    /// Where to connect: to the port of the address; else to `asked`, the second word of /server; else to that
    /// of the preset, unless it is the classic one; else to the usual one. 0 stands for none, and so does what
    /// is no port.
    quint16 port(int asked = 0, int ofPreset = 0) const;
    /// Empty when the address names none.
    QString account() const { return m_account; }
    /// Each with its channel character.
    QStringList channels() const { return m_channels; }

private:
    /// These read a part of the address; a text says what is wrong with it.
    QString readAuthority(const QString &authority);
    QString readHost(const QString &text);
    QString readPort(const QString &text);
    QString readChannels(const QString &path);

    bool encrypted = false;
    quint16 m_port = 0;
    QString m_host;
    QString m_account;
    QStringList m_channels;
    QString m_error;
};
