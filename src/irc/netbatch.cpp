// SPDX-License-Identifier: MIT
#include "netbatch.h"

#include "ircmessage.h"

using namespace Qt::StringLiterals;

namespace {

/// A server that opens batches without end would fill the memory.
constexpr qsizetype maxOpen = 16;
constexpr int maxPeople = 100'000;
constexpr qsizetype maxBytes = 8'000'000;

} // namespace

bool netbatches::takes(const ircmessage &message)
{
    if (message.command() == "BATCH"_L1) {
        const QString name = message.param(0, true);
        const QString type = message.param(1, true).toLower();
        const bool left = type == "netsplit"_L1;
        if (!name.startsWith(u'+') || (!left && type != "netjoin"_L1) || open.size() == maxOpen ||
            open.contains(name.mid(1)))
            return false;
        open.insert(name.mid(1), {left, {message.param(2, true), message.param(3, true)}, {}, {}});
        return true;
    }
    const auto batch = open.find(message.tags().value(u"batch"));
    if (batch == open.end() || people == maxPeople || bytes > maxBytes)
        return false;
    if (batch->left && message.command() == "QUIT"_L1) {
        batch->nicks.append(message.prefix()->nick());
        ++people;
        bytes += message.prefix()->nick().size() + message.prefix()->user().size() +
                 message.prefix()->host().size();
        return true;
    }
    if (!batch->left && message.command() == "JOIN"_L1) {
        const ircuser &who = *message.prefix();
        batch->joined[message.param(0, true).toLower()].append(who.nick() + u'!' + who.user() + u'@' +
                                                               who.host());
        ++people;
        bytes += message.prefix()->nick().size() + message.prefix()->user().size() +
                 message.prefix()->host().size();
        return true;
    }
    return false;
}

bool netbatches::ends(const ircmessage &message, netbatch *whole)
{
    const QString name = message.param(0, true);
    if (message.command() != "BATCH"_L1 || !name.startsWith(u'-') || !open.contains(name.mid(1)))
        return false;
    *whole = open.take(name.mid(1));
    if (open.isEmpty())
        clear();
    return true;
}
