// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The rules of the server that we talk to: which names are channels, which ranks members have, which modes
/// take an argument, which names are the same, and how long things may be.
///
/// By default these are the rules of RFC 1459, which hold for every server that has announced no others.
class isupport
{
public:
    /// The rank of a member in a channel, as far as we show it.
    enum class rank { none, voice, halfop, op };

    /// The rules of RFC 1459, where no server is known.
    static const isupport &classic();

    /// Whether `name` is a channel (RFC 1459, 1.3).
    bool isChannel(const QString &name) const
    {
        return !name.isEmpty() && channelTypes.contains(name.front());
    }
    /// Whether two nicks, or two names of channels, are the same.
    bool same(const QString &a, const QString &b) const { return a.compare(b, Qt::CaseInsensitive) == 0; }

    /// Whether `c` is the sign of a rank in front of a nick (RFC 2812, 353).
    bool isPrefix(QChar c) const { return prefixes.contains(c); }
    /// The rank that a channel's mode letter gives to the member in its argument.
    rank rankOfMode(QChar letter) const;
    /// Whether `letter`, after `sign` in a MODE of a channel, takes an argument (RFC 1459, 4.2.3.1).
    bool takesArgument(QChar sign, QChar letter) const;

    /// In bytes: the maximum of a nick, and of a line with its CR LF.
    int maxNick = 9;
    int maxLine = 512;

private:
    QString channelTypes = QStringLiteral("#&");
    /// The letters that give a rank, the highest first, and their signs in the same order.
    QString prefixModes = QStringLiteral("ohv");
    QString prefixes = QStringLiteral("@%+");
    /// Other letters: those that always take an argument, and those that do only when they are set.
    QString alwaysWithArgument = QStringLiteral("kl");
    QString setWithArgument;
};
