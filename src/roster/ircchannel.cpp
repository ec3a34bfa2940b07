// SPDX-License-Identifier: MIT
#include "ircchannel.h"

#include "ircmode.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// More than any channel has. Without a bound a server could make each change take seconds.
constexpr qsizetype maxMembers = 100'000;

struct rankchange
{
    QLatin1StringView modes;
    void (ircchanneluser::*apply)() = nullptr;
};

constexpr rankchange rankChanges[] = {
    {"+o"_L1, &ircchanneluser::setOp},     {"-o"_L1, &ircchanneluser::removeOp},
    {"+v"_L1, &ircchanneluser::setVoice},  {"-v"_L1, &ircchanneluser::removeVoice},
    {"+h"_L1, &ircchanneluser::setHalfop}, {"-h"_L1, &ircchanneluser::removeHalfop},
};

bool isRank(QChar c)
{
    return c == u'@' || c == u'%' || c == u'+';
}

} // namespace

ircchannel::ircchannel(QString name) : m_channelName(std::move(name)) {}

const ircchanneluser *ircchannel::findUser(const QString &nick) const
{
    const qsizetype i = m_roster.find(nick);
    return i < 0 ? nullptr : &m_roster.at(i);
}

void ircchannel::join(const ircuser *u)
{
    add(ircchanneluser(u->nick() + u'!' + u->user() + u'@' + u->host(), {}));
}

void ircchannel::remove(const ircuser *u)
{
    const qsizetype i = m_roster.find(u->nick());
    if (i < 0)
        return;
    m_roster.removeAt(i);
    keepSorted();
}

void ircchannel::nick(const QString &oldnick, const QString &newnick)
{
    const qsizetype i = m_roster.find(oldnick);
    if (i >= 0) {
        ircchanneluser user = m_roster.takeAt(i);
        user.setNick(newnick);
        add(user);
    }
    keepSorted();
}

void ircchannel::mode(const ircmode *m)
{
    const qsizetype i = m_roster.find(m->arg(0));
    if (i >= 0) {
        const QString modes = m->modes();
        const auto *change = std::find_if(std::begin(rankChanges), std::end(rankChanges),
                                          [&](const rankchange &c) { return modes == c.modes; });
        if (change != std::end(rankChanges)) {
            ircchanneluser user = m_roster.takeAt(i);
            (user.*change->apply)();
            add(user);
        } else {
            qWarning("unknown mode for user in this channel");
        }
    }
    keepSorted();
}

void ircchannel::names(QStringList *list)
{
    if (!namesInProgress) {
        namesInProgress = true;
        m_roster.clear();
    }
    unsorted = true;
    for (QString &entry : *list) {
        if (m_roster.size() == maxMembers)
            return;
        qsizetype ranks = 0;
        while (ranks < entry.size() && isRank(entry[ranks]))
            ++ranks;
        const QString prefixes = entry.left(ranks);
        entry.remove(0, ranks);
        m_roster.append(ircchanneluser(entry, prefixes));
    }
}

void ircchannel::endNames()
{
    keepSorted();
    namesInProgress = false;
}

void ircchannel::add(const ircchanneluser &user)
{
    keepSorted();
    if (m_roster.size() < maxMembers)
        m_roster.place(user);
}

void ircchannel::keepSorted()
{
    if (unsorted)
        m_roster.sort();
    unsorted = false;
}
