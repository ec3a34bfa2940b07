// SPDX-License-Identifier: MIT
#include "isupport.h"

#include "ircmessage.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// More letters or signs of a kind than any server has.
constexpr qsizetype maxSigns = 64;
/// What a length may be: no nick or channel fills a line, and a line is as long as RFC 1459 says, or longer.
constexpr int longestName = 400;
constexpr int shortestLine = 512;
constexpr int longestLine = 8192;

bool isLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

/// What can stand in front of a name without being taken for a part of it, or for something else in a line.
bool isSign(QChar c)
{
    return c > u' ' && c < QChar(0x7f) && !c.isLetterOrNumber() && c != u':' && c != u',';
}

template <typename Kind>
bool areAll(QStringView text, Kind isOfKind)
{
    return text.size() <= maxSigns && std::all_of(text.begin(), text.end(), isOfKind);
}

/// Takes the number in `value` if it is within bounds.
void setNumber(int *number, const QString &value, int least, int most)
{
    bool ok = false;
    const int read = value.toInt(&ok);
    if (ok && read >= least && read <= most)
        *number = read;
}

} // namespace

const isupport &isupport::classic()
{
    static const isupport rules;
    return rules;
}

isupport::rank isupport::rankOfMode(QChar letter) const
{
    const qsizetype place = prefixModes.indexOf(letter);
    if (place < 0)
        return rank::none;
    // A rank above operator is shown as operator.
    if (place <= prefixModes.indexOf(u'o'))
        return rank::op;
    if (letter == u'h')
        return rank::halfop;
    return letter == u'v' ? rank::voice : rank::none;
}

QChar isupport::modeOfPrefix(QChar c) const
{
    const qsizetype place = prefixes.indexOf(c);
    return place < 0 ? QChar() : prefixModes[place];
}

QChar isupport::prefixOfMode(QChar letter) const
{
    const qsizetype place = prefixModes.indexOf(letter);
    return place < 0 ? QChar() : prefixes[place];
}

bool isupport::takesArgument(QChar sign, QChar letter) const
{
    return prefixModes.contains(letter) || alwaysWithArgument.contains(letter) ||
           (sign == u'+' && setWithArgument.contains(letter));
}

QString isupport::channelOf(const QString &target) const
{
    const auto *const name = std::find_if_not(target.begin(), target.end(),
                                              [this](QChar c) { return statusPrefixes.contains(c); });
    const QString channel = target.mid(name - target.begin());
    return isChannel(channel) ? channel : target;
}

// --- what a server tells ---

struct isupport::rule
{
    QLatin1StringView name;
    void (isupport::*set)(const QString &value) = nullptr;
    /// What holds when the server takes the rule back.
    QLatin1StringView classic;
};

const isupport::rule isupport::rules[] = {
    {"CHANTYPES"_L1, &isupport::setChannelTypes, "#&"_L1},
    {"PREFIX"_L1, &isupport::setPrefixes, "(ohv)@%+"_L1},
    {"CHANMODES"_L1, &isupport::setModes, ",kl,,"_L1},
    {"CASEMAPPING"_L1, &isupport::setCaseMapping, {}},
    {"NICKLEN"_L1, &isupport::setMaxNick, "9"_L1},
    {"CHANNELLEN"_L1, &isupport::setMaxChannel, "200"_L1},
    {"STATUSMSG"_L1, &isupport::setStatusPrefixes, {}},
    {"LINELEN"_L1, &isupport::setMaxLine, "512"_L1},
};

void isupport::learn(const ircmessage &reply)
{
    // The first word is our nick, and a text for people follows.
    for (int i = 1; i < reply.paramCount() && !reply.param(i, false).startsWith(u':'); ++i) {
        const QString token = reply.param(i, false);
        const bool takenBack = token.startsWith(u'-');
        const QString name = token.section(u'=', 0, 0).mid(takenBack ? 1 : 0);
        if (name == "UTF8ONLY"_L1)
            utf8Only = !takenBack;
        for (const rule &r : rules) {
            if (name == r.name)
                (this->*r.set)(takenBack ? QString(r.classic) : token.section(u'=', 1));
        }
    }
}

void isupport::setChannelTypes(const QString &value)
{
    if (areAll(value, isSign))
        channelTypes = value;
}

void isupport::setPrefixes(const QString &value)
{
    const qsizetype middle = value.indexOf(u')');
    const QString letters = value.mid(1, std::max<qsizetype>(middle - 1, 0));
    const QString signs = value.mid(middle + 1);
    if (!value.isEmpty() && (!value.startsWith(u'(') || middle < 0))
        return;
    if (letters.size() != signs.size() || !areAll(letters, isLetter) || !areAll(signs, isSign))
        return;
    prefixModes = letters;
    prefixes = signs;
}

void isupport::setModes(const QString &value)
{
    if (value.size() > maxSigns * 4)
        return;
    // Lists, always with an argument, with one when they are set, without.
    alwaysWithArgument = value.section(u',', 0, 0) + value.section(u',', 1, 1);
    setWithArgument = value.section(u',', 2, 2);
}

void isupport::setCaseMapping(const QString &value)
{
    names = casemappingOf(value);
}

void isupport::setStatusPrefixes(const QString &value)
{
    if (areAll(value, isSign))
        statusPrefixes = value;
}

void isupport::setMaxNick(const QString &value)
{
    setNumber(&maxNick, value, 1, longestName);
}

void isupport::setMaxChannel(const QString &value)
{
    setNumber(&maxChannel, value, 1, longestName);
}

void isupport::setMaxLine(const QString &value)
{
    setNumber(&maxLine, value, shortestLine, longestLine);
}
