// SPDX-License-Identifier: MIT
#include "replysorter.h"

#include "formatting.h"
#include "ircmessage.h"
#include "isupport.h"

#include <QDateTime>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace {

using enum sortedreply::place;

struct replyrow
{
    QLatin1StringView command;
    sortedreply::place where = server;
    /// $0 is the sender, $1 the first parameter, and so on; $2- all from the second on, $* all from the first that is no number on, without our nick. $2t is a time in seconds since
    /// 1970, $2s a number of seconds.
    QLatin1StringView text;
};

constexpr replyrow rows[] = {
    // What only programs read.
    {"004"_L1, none, ""_L1},
    {"005"_L1, none, ""_L1},
    {"PONG"_L1, none, ""_L1},
    {"CHGHOST"_L1, none, ""_L1},
    {"SETNAME"_L1, none, ""_L1},
    {"ACCOUNT"_L1, none, ""_L1},
    {"AWAY"_L1, none, ""_L1},
    {"ERROR"_L1, none, ""_L1},
    {"315"_L1, none, ""_L1},
    {"321"_L1, none, ""_L1},
    {"323"_L1, none, ""_L1},
    {"318"_L1, none, ""_L1},
    {"329"_L1, none, ""_L1},
    {"369"_L1, none, ""_L1},
    // Some servers repeat the numbers in front of the text.
    {"265"_L1, server, "$*"_L1},
    {"266"_L1, server, "$*"_L1},
    {"900"_L1, server, "$4-"_L1},
    {"901"_L1, server, "$3-"_L1},
    // Channels.
    {"TOPIC"_L1, channel, "$0 sets the topic: $2-"_L1},
    {"331"_L1, channel, "No topic is set"_L1},
    {"332"_L1, channel, "Topic: $3-"_L1},
    {"333"_L1, channel, "Topic set by $3, $4t"_L1},
    {"324"_L1, channel, "Modes: $3-"_L1},
    {"341"_L1, channel, "You have invited $2"_L1},
    {"INVITE"_L1, front, "$0 invites you to $2"_L1},
    // People (WHOIS, WHOWAS).
    {"301"_L1, front, "$2 is away: $3-"_L1},
    {"307"_L1, front, "$2 $3-"_L1},
    {"311"_L1, front, "$2 is $3@$4: $6-"_L1},
    {"312"_L1, front, "$2 is on $3: $4-"_L1},
    {"313"_L1, front, "$2 $3-"_L1},
    {"314"_L1, front, "$2 was $3@$4: $6-"_L1},
    {"317"_L1, front, "$2 has been idle for $3s, here since $4t"_L1},
    {"319"_L1, front, "$2 is in $3-"_L1},
    {"330"_L1, front, "$2 is logged in as $3"_L1},
    {"276"_L1, front, "$2 $3-"_L1},
    {"335"_L1, front, "$2 $3-"_L1},
    {"338"_L1, front, "$2 $3-"_L1},
    {"378"_L1, front, "$2 $3-"_L1},
    {"379"_L1, front, "$2 $3-"_L1},
    {"671"_L1, front, "$2 $3-"_L1},
    // Other answers to what was typed, and what is wrong with it.
    {"305"_L1, front, "$2-"_L1},
    {"322"_L1, front, "$2, $3 people: $4-"_L1},
    {"352"_L1, front, "$6 is $3@$4 in $2: $8-"_L1},
    {"306"_L1, front, "$2-"_L1},
    {"401"_L1, front, "$2: $3-"_L1},
    {"402"_L1, front, "$2: $3-"_L1},
    {"403"_L1, front, "$2: $3-"_L1},
    {"404"_L1, channel, "$3-"_L1},
    {"406"_L1, front, "$2: $3-"_L1},
    {"411"_L1, front, "$2-"_L1},
    {"412"_L1, front, "$2-"_L1},
    {"417"_L1, front, "$2-"_L1},
    {"421"_L1, front, "$2: $3-"_L1},
    {"431"_L1, front, "$2-"_L1},
    {"432"_L1, front, "$2: $3-"_L1},
    {"433"_L1, front, "$2: $3-"_L1},
    {"436"_L1, front, "$2: $3-"_L1},
    {"437"_L1, front, "$2: $3-"_L1},
    {"441"_L1, front, "$2: $4-"_L1},
    {"443"_L1, front, "$2: $4-"_L1},
    {"461"_L1, front, "$2: $3-"_L1},
    {"FAIL"_L1, front, "$3-"_L1},
    {"WARN"_L1, front, "$3-"_L1},
    {"NOTE"_L1, front, "$3-"_L1},
};

bool isNumeric(const QString &command)
{
    return command.size() == 3 && command[0].isDigit() && command[1].isDigit() && command[2].isDigit();
}

QString asTime(const QString &seconds)
{
    return QLocale::system().toString(QDateTime::fromSecsSinceEpoch(seconds.toLongLong()),
                                      QLocale::ShortFormat);
}

QString asDuration(const QString &text)
{
    const qlonglong seconds = text.toLongLong();
    if (seconds < 60)
        return u"%1 s"_s.arg(seconds);
    if (seconds < 3600)
        return u"%1 min"_s.arg(seconds / 60);
    return u"%1 h %2 min"_s.arg(seconds / 3600).arg(seconds / 60 % 60);
}

/// The place of the first parameter behind our nick that is no number.
int firstWord(const ircmessage &message)
{
    int place = 1;
    while (place < message.paramCount() && message.param(place, true).toInt() > 0)
        ++place;
    return place;
}

/// The text of a row with what `message` says in it. Standard replies end in one parameter of text, whatever stands
/// between.
QString filled(QLatin1StringView pattern, const ircmessage &message)
{
    QString text;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != u'$') {
            text += pattern[i];
            continue;
        }
        if (pattern[++i] == u'*') {
            text += message.paramsFrom(firstWord(message), true);
            continue;
        }
        const int number = QChar(pattern[i]).digitValue();
        const char kind = i + 1 < pattern.size() ? QChar(pattern[i + 1]).toLatin1() : ' ';
        const QString word =
            unformatted(number == 0 ? message.prefix()->nick() : message.param(number - 1, true));
        if (kind == '-')
            text += message.paramsFrom(number - 1, true);
        else if (kind == 't')
            text += asTime(word);
        else if (kind == 's')
            text += asDuration(word);
        else
            text += word;
        i += kind == '-' || kind == 't' || kind == 's' ? 1 : 0;
    }
    return text;
}

} // namespace

sortedreply sortReply(const ircmessage &message, const isupport &rules)
{
    const QString command = message.command();
    // RFC 2812, 5: the first parameter of a numeric is our nick, and those from 400 to 599 are errors.
    const int first = isNumeric(command) ? 1 : 0;
    const bool isError = first == 1 && command >= "400"_L1 && command < "600"_L1;
    // An error that names a channel belongs there, whatever it says of nicks.
    const bool ofChannel = isError && rules.isChannel(message.param(first, true));
    for (const replyrow &row : rows) {
        if (command != row.command || (ofChannel && row.where == front))
            continue;
        const QString name = message.param(command == "341"_L1 ? 2 : first, true);
        const bool empties = command == "TOPIC"_L1 && message.param(1, true).isEmpty();
        return {row.where, row.where == channel ? name : QString(),
                filled(empties ? "$0 removes the topic"_L1 : row.text, message), isError};
    }
    const QString name = message.param(first, true);
    if (rules.isChannel(name) && message.paramCount() > first + 1)
        return {channel, name, message.paramsFrom(first + 1, true), isError};
    return {server, {}, message.paramsFrom(first, true), false};
}
