// SPDX-License-Identifier: MIT
#pragma once

#include "casemapping.h"

#include <QString>

class ircmessage;

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

    /// Takes the rules that a server tells (numeric 005, ISUPPORT). One that is malformed or out of all proportion
    /// changes nothing.
    void learn(const ircmessage &reply);

    /// Whether `name` is a channel (RFC 1459, 1.3).
    bool isChannel(const QString &name) const
    {
        return !name.isEmpty() && channelTypes.contains(name.front());
    }
    /// The channel of which `target` names those who have a rank, as "@#c" does (STATUSMSG); else `target` itself.
    QString channelOf(const QString &target) const;
    /// Whether two nicks, or two names of channels, are the same.
    bool same(const QString &a, const QString &b) const { return sameName(a, b, names); }
    casemapping caseOfNames() const { return names; }

    /// Whether `c` is the sign of a rank in front of a nick (RFC 2812, 353).
    bool isPrefix(QChar c) const { return prefixes.contains(c); }
    /// The rank that a channel's mode letter gives to the member in its argument.
    rank rankOfMode(QChar letter) const;
    /// The mode letter that gives the rank of which `c` is the sign; null if there is none.
    QChar modeOfPrefix(QChar c) const;
    /// The sign of the rank that the mode `letter` gives; null if it gives none.
    QChar prefixOfMode(QChar letter) const;
    /// Whether `letter`, behind `sign` in a MODE of a channel, takes an argument (RFC 1459, 4.2.3.1).
    bool takesArgument(QChar sign, QChar letter) const;

    /// In bytes, the longest nick, name of a channel, and line with its CR LF.
    int maxNick = 9;
    int maxChannel = 200;
    int maxLine = 512;
    /// The server lets nothing through that is not UTF-8.
    bool utf8Only = false;

private:
    struct rule;
    static const rule rules[];

    void setChannelTypes(const QString &value);
    void setPrefixes(const QString &value);
    void setModes(const QString &value);
    void setCaseMapping(const QString &value);
    void setStatusPrefixes(const QString &value);
    void setMaxNick(const QString &value);
    void setMaxChannel(const QString &value);
    void setMaxLine(const QString &value);

    QString channelTypes = QStringLiteral("#&");
    /// The letters that give a rank, the highest first, and their signs in the same order.
    QString prefixModes = QStringLiteral("ohv");
    QString prefixes = QStringLiteral("@%+");
    /// Other letters: those that always take an argument, and those that do only when they are set.
    QString alwaysWithArgument = QStringLiteral("kl");
    QString setWithArgument;
    QString statusPrefixes;
    casemapping names = casemapping::unicode;
};
