// SPDX-License-Identifier: MIT
#include "netbatch.h"

#include "ircmessage.h"
#include "ircmode.h"
#include "isupport.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// A server that opens batches without end would fill the memory.
constexpr qsizetype maxOpen = 16;
constexpr int maxPeople = 100'000;
constexpr qsizetype maxBytes = 8'000'000;

QString placeOf(const QString &channel, const QString &nick, const isupport &rules)
{
    return folded(channel + u' ' + nick, rules.caseOfNames());
}

} // namespace

QStringList netbatch::joinedIn(const QString &channel, const isupport &rules) const
{
    return joined.value(folded(channel, rules.caseOfNames()));
}

bool netbatches::takes(const ircmessage &message, const isupport &rules)
{
    const QString command = message.command();
    if (command == "BATCH"_L1) {
        const QString name = message.param(0, true);
        const QString type = message.param(1, true).toLower();
        const bool left = type == "netsplit"_L1;
        if (!name.startsWith(u'+') || (!left && type != "netjoin"_L1) || open.size() == maxOpen ||
            open.contains(name.mid(1)))
            return false;
        open.insert(name.mid(1), {{left, {message.param(2, true), message.param(3, true)}, {}, {}}, {}});
        return true;
    }
    const auto batch = open.find(message.tags().value(u"batch"));
    if (batch == open.end())
        return false;
    if (batch->whole.left)
        return command == "QUIT"_L1 && takesQuit(&*batch, message);
    if (command == "MODE"_L1)
        return takesRanks(&*batch, message, rules);
    return command == "JOIN"_L1 && takesJoin(&*batch, message, rules);
}

bool netbatches::takesQuit(openbatch *batch, const ircmessage &message)
{
    if (isFull())
        return false;
    batch->whole.nicks.append(message.prefix()->nick());
    count(message);
    return true;
}

bool netbatches::takesJoin(openbatch *batch, const ircmessage &message, const isupport &rules)
{
    if (isFull())
        return false;
    const ircuser &who = *message.prefix();
    const QString channel = message.param(0, true);
    QStringList &joined = batch->whole.joined[folded(channel, rules.caseOfNames())];
    batch->places.insert(placeOf(channel, who.nick(), rules), joined.size());
    joined.append(who.nick() + u'!' + who.user() + u'@' + who.host());
    count(message);
    return true;
}

bool netbatches::takesRanks(openbatch *batch, const ircmessage &message, const isupport &rules)
{
    const ircmode all(message);
    const QList<modeletter> letters = all.letters(rules);
    const auto place = [&](const modeletter &l) {
        return batch->places.value(placeOf(all.target(), l.argument, rules), -1);
    };
    const auto isRank = [&](const modeletter &l) {
        return l.sign == u'+' && !rules.prefixOfMode(l.letter).isNull() && place(l) >= 0;
    };
    if (letters.isEmpty() || !std::all_of(letters.begin(), letters.end(), isRank))
        return false;
    QStringList &joined = batch->whole.joined[folded(all.target(), rules.caseOfNames())];
    for (const modeletter &l : letters) {
        const QChar sign = rules.prefixOfMode(l.letter);
        QString &person = joined[place(l)];
        if (!person.section(u'!', 0, 0).contains(sign))
            person.prepend(sign);
    }
    return true;
}

bool netbatches::isFull() const
{
    return people == maxPeople || bytes > maxBytes;
}

void netbatches::count(const ircmessage &message)
{
    const ircuser &who = *message.prefix();
    ++people;
    bytes += who.nick().size() + who.user().size() + who.host().size() + message.param(0, true).size();
}

bool netbatches::ends(const ircmessage &message, netbatch *whole)
{
    const QString name = message.param(0, true);
    if (message.command() != "BATCH"_L1 || !name.startsWith(u'-') || !open.contains(name.mid(1)))
        return false;
    *whole = open.take(name.mid(1)).whole;
    if (open.isEmpty())
        clear();
    return true;
}
