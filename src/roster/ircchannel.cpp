// SPDX-License-Identifier: MIT
#include "ircchannel.h"

#include "ircmode.h"
#include "isupport.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

/// More than any channel has. Without a maximum a server could make each change take seconds.
constexpr qsizetype maxMembers = 100'000;

/// The functions that set and remove a rank.
struct rankchange
{
    isupport::rank rank = isupport::rank::none;
    void (ircchanneluser::*set)() = nullptr;
    void (ircchanneluser::*remove)() = nullptr;
};

constexpr rankchange rankChanges[] = {
    {isupport::rank::op, &ircchanneluser::setOp, &ircchanneluser::removeOp},
    {isupport::rank::halfop, &ircchanneluser::setHalfop, &ircchanneluser::removeHalfop},
    {isupport::rank::voice, &ircchanneluser::setVoice, &ircchanneluser::removeVoice},
};

/// Applies one letter with its sign, such as "+o"; false if it gives no rank.
bool applyMode(ircchanneluser *user, const QString &mode, const isupport &rules)
{
    if (mode.size() != 2 || (mode[0] != u'+' && mode[0] != u'-'))
        return false;
    const isupport::rank rank = rules.rankOfMode(mode[1]);
    for (const rankchange &c : rankChanges) {
        if (c.rank != rank)
            continue;
        (user->*(mode[0] == u'+' ? c.set : c.remove))();
        return true;
    }
    return false;
}

} // namespace

ircchannel::ircchannel(QString name, const isupport &rules) : m_channelName(std::move(name)), m_rules(rules)
{
}

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
        ircchanneluser user = m_roster.at(i);
        if (applyMode(&user, m->modes(), m_rules)) {
            m_roster.removeAt(i);
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
        while (ranks < entry.size() && m_rules.isPrefix(entry[ranks]))
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
