// SPDX-License-Identifier: MIT
#include "ircchannel.h"

#include "ircmode.h"
#include "isupport.h"

#include <QSet>
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

/// Gives or takes what the mode `letter` stands for; false if that is no rank.
bool setRank(ircchanneluser *user, QChar letter, bool held, const isupport &rules)
{
    const isupport::rank rank = rules.rankOfMode(letter);
    if (rank == isupport::rank::op && letter != u'o') {
        user->setHigher(letter, held);
        return true;
    }
    for (const rankchange &c : rankChanges) {
        if (c.rank != rank)
            continue;
        (user->*(held ? c.set : c.remove))();
        return true;
    }
    return false;
}

/// Applies one letter with its sign, such as "+o"; false if it is no rank.
bool applyMode(ircchanneluser *user, const QString &mode, const isupport &rules)
{
    if (mode.size() != 2 || (mode[0] != u'+' && mode[0] != u'-'))
        return false;
    return setRank(user, mode[1], mode[0] == u'+', rules);
}

} // namespace

ircchannel::ircchannel(QString name, const isupport &rules) : m_channelName(std::move(name)), m_rules(rules)
{
}

const ircchanneluser *ircchannel::findUser(const QString &nick) const
{
    const qsizetype i = m_roster.find(nick, m_rules.caseOfNames());
    return i < 0 ? nullptr : &m_roster.at(i);
}

void ircchannel::join(const ircuser *u)
{
    add(ircchanneluser(u->nick() + u'!' + u->user() + u'@' + u->host(), {}, m_rules.caseOfNames()));
}

void ircchannel::remove(const ircuser *u)
{
    const qsizetype i = m_roster.find(u->nick(), m_rules.caseOfNames());
    if (i < 0)
        return;
    m_roster.removeAt(i);
    keepSorted();
}

qsizetype ircchannel::removeAll(const QStringList &nicks)
{
    // A netsplit takes thousands at once: each is looked up in a set, not in the roster.
    QSet<QString> keys;
    for (const QString &nick : nicks)
        keys.insert(folded(nick, m_rules.caseOfNames()));
    const qsizetype gone =
        m_roster.removeIf([&keys](const ircchanneluser &user) { return keys.contains(user.key()); });
    keepSorted();
    return gone;
}

qsizetype ircchannel::joinAll(const QStringList &masks)
{
    const qsizetype before = m_roster.size();
    for (QString mask : masks) {
        if (m_roster.size() < maxMembers)
            m_roster.append(takeRanks(&mask));
    }
    unsorted = true;
    if (!namesInProgress)
        keepSorted();
    return m_roster.size() - before;
}

void ircchannel::clear()
{
    m_roster.clear();
    namesInProgress = false;
    unsorted = false;
}

void ircchannel::nick(const QString &oldnick, const QString &newnick)
{
    const qsizetype i = m_roster.find(oldnick, m_rules.caseOfNames());
    if (i >= 0) {
        ircchanneluser user = m_roster.takeAt(i);
        user.setNick(newnick, m_rules.caseOfNames());
        add(user);
    }
    keepSorted();
}

void ircchannel::mode(const ircmode *m)
{
    const qsizetype i = m_roster.find(m->arg(0), m_rules.caseOfNames());
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
        m_roster.append(takeRanks(&entry));
    }
}

ircchanneluser ircchannel::takeRanks(QString *entry) const
{
    qsizetype ranks = 0;
    while (ranks < entry->size() && m_rules.isPrefix(entry->at(ranks)))
        ++ranks;
    const QString signs = entry->left(ranks);
    entry->remove(0, ranks);
    ircchanneluser user(*entry, {}, m_rules.caseOfNames());
    for (const QChar sign : signs)
        setRank(&user, m_rules.modeOfPrefix(sign), true, m_rules);
    return user;
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
