// SPDX-License-Identifier: MIT
#include "ircsession.h"

#include "channeltab.h"
#include "connectbox.h"
#include "ircchannel.h"
#include "ircmessage.h"
#include "ircmode.h"
#include "ircuserbox.h"
#include "mention.h"
#include "plaintab.h"
#include "rostermodel.h"
#include "tabbar.h"
#include "tabwindow.h"
#include "version.h"

#include <QDateTime>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// After this time the signal that asked for the close has returned.
constexpr int closeDelayMs = 1;
/// The maximum of CTCP requests that are answered within one period.
constexpr int maxAnswers = 5;
constexpr int answerPeriodMs = 10'000;

} // namespace

ircsession::ircsession(tabwindow *window)
    : mainWindow(window), serverTab(newPlainTab(u"Server"_s, usercommands::place::server)), topTab(serverTab)
{
    clock.start();
    connect(&conn, &connection::disconnected, this, &ircsession::socketDisconnect);
    connect(&conn, &connection::errormsg, this, &ircsession::errormsg);
    connect(&conn, &connection::privmsg, this, &ircsession::parsePrivmsg);
    connect(&conn, &connection::notice, this, &ircsession::parseNotice);
    connect(&conn, &connection::ctcpnotice, this, &ircsession::parseNotice);
    connect(&conn, &connection::join, this, &ircsession::parseJoin);
    connect(&conn, &connection::part, this, &ircsession::parsePart);
    connect(&conn, &connection::quit, this, &ircsession::parseQuit);
    connect(&conn, &connection::kick, this, &ircsession::parseKick);
    connect(&conn, &connection::ctcp, this, &ircsession::parseCtcp);
    connect(&conn, &connection::mode, this, &ircsession::parseMode);
    connect(&conn, &connection::message, this, &ircsession::parseMessage);
    connect(&conn, &connection::rpl_namreply, this, &ircsession::rpl_namreply);
    connect(&conn, &connection::rpl_endofnames, this, &ircsession::rpl_endofnames);
    connect(&conn, &connection::nick, this, &ircsession::parseNick);
    connect(&conn, &connection::modes, this, &ircsession::modesChanged);
    connect(&conn, &connection::dropped, serverTab, &irctab::message);
}

// When a tab is deleted, another one emits amTopTab(). The session must not receive that any more.
ircsession::~ircsession()
{
    for (const auto &tab : tabs)
        tab->disconnect(this);
}

// --- tabs ---

template <typename Tab>
Tab *ircsession::adopt(std::unique_ptr<Tab> tab)
{
    Tab *added = tab.get();
    tabs.push_back(std::move(tab));
    added->rules = &conn.supports;
    connect(added, &irctab::gotUserInput, this, &ircsession::userInput);
    return added;
}

plaintab *ircsession::newPlainTab(const QString &name, usercommands::place where)
{
    plaintab *tab = adopt(std::make_unique<plaintab>(mainWindow, name, where));
    connect(tab, &irctab::amTopTab, this, &ircsession::newTopTab);
    return tab;
}

channeltab *ircsession::newChannelTab(const QString &name)
{
    ircchannel *roster = rosters.emplace_back(std::make_unique<ircchannel>(name, conn.supports)).get();
    channeltab *tab = adopt(std::make_unique<channeltab>(mainWindow, roster, name));
    connect(&conn, &connection::modes, tab, &irctab::modes);
    connect(&conn, &connection::mode, tab, &channeltab::mode);
    connect(tab->userBox, &QListView::doubleClicked, this,
            [this](const QModelIndex &member) { openQuery(member.data(rostermodel::NickRole).toString()); });
    connect(tab, &irctab::amTopTab, this, &ircsession::newTopTab);
    return tab;
}

irctab *ircsession::findTab(const QString &name) const
{
    const auto found = std::find_if(
        tabs.begin(), tabs.end(), [&](const auto &tab) { return conn.supports.same(tab->tabName(), name); });
    return found == tabs.end() ? nullptr : found->get();
}

void ircsession::closeTab(irctab *tab)
{
    closingTab = tab;
    QTimer::singleShot(closeDelayMs, this, &ircsession::removeTab);
}

void ircsession::removeTab()
{
    const auto found =
        std::find_if(tabs.begin(), tabs.end(), [this](const auto &tab) { return tab.get() == closingTab; });
    closingTab = nullptr;
    if (found == tabs.end())
        return;
    const std::unique_ptr<irctab> closed = std::move(*found);
    tabs.erase(found);
    if (topTab == closed.get())
        topTab = serverTab;
}

void ircsession::newTopTab(irctab *tab)
{
    topTab = tab;
}

// --- the user ---

void ircsession::showConnectDialog()
{
    QString nick;
    QString server;
    int port = 0;
    QStringList channels;
    connectbox dialog(&nick, &server, &port, &channels);
    dialog.exec();
    if (dialog.result() != QDialog::Accepted || nick.isEmpty() || server.isEmpty())
        return;
    conn.channels = channels;
    conn.connectToServer(server, port, nick, conn.identity.user(), conn.identity.realname());
}

void ircsession::userInput(const QString &text, irctab *tab)
{
    const QString nick = conn.identity.nick();
    if (!text.startsWith(u'/')) {
        if (text.isEmpty())
            return;
        conn.sendPrivmsg(tab->tabName(), text);
        tab->privmsg(nick, text);
        return;
    }
    QString action;
    if (tab != serverTab && usercommands::isClose(text))
        return closeTab(tab);
    if (tab != serverTab && usercommands::isAction(text, &action))
        tab->action(nick, action);
    conn.userCommand(text, tab->tabName());
}

void ircsession::socketDisconnect()
{
    const auto end = newEvent(event::kind::disconnect);
    for (const auto &tab : tabs) {
        tab->message(u"Disconnected"_s);
        tab->happened(end);
    }
}

void ircsession::openQuery(const QString &nick)
{
    if (const irctab *tab = findTab(nick))
        mainWindow->tabBar->setCurrentTab(tab->tabId);
    else
        newTopTab(newPlainTab(nick));
}

void ircsession::errormsg(const QString &text)
{
    topTab->message(text);
    topTab->happened(newEvent(event::kind::reply));
}

// --- what happened ---

event ircsession::newEvent(event::kind what)
{
    struct event e;
    e.what = what;
    e.when = QDateTime::currentMSecsSinceEpoch();
    return e;
}

event ircsession::newEvent(event::kind what, const ircmessage *msg, const QString &text) const
{
    auto e = newEvent(what);
    e.who = *msg->prefix();
    e.where = msg->param(0, true);
    e.text = text;
    e.ours = sentByMe(msg);
    e.forUs = e.isTalk() && !e.ours && (addressedToMe(msg) || mentions(text, conn.identity.nick()));
    return e;
}

void ircsession::modesChanged(ircmode *m) const
{
    irctab *tab = findChannelTab(m->target());
    if (conn.supports.same(m->target(), conn.identity.nick()))
        tab = serverTab;
    if (tab == nullptr)
        return;
    auto e = newEvent(event::kind::mode);
    e.who = *m->who();
    e.where = m->target();
    e.ours = e.who.nick() == conn.identity.nick();
    tab->happened(e);
}

bool ircsession::addressedToMe(const ircmessage *msg) const
{
    return msg->param(0, false) == conn.identity.nick();
}

bool ircsession::sentByMe(const ircmessage *msg) const
{
    return msg->prefix()->nick() == conn.identity.nick();
}

irctab *ircsession::tabForMessage(const ircmessage *msg)
{
    const bool query = addressedToMe(msg);
    const QString name = query ? msg->prefix()->nick() : msg->param(0, true);
    if (irctab *tab = findTab(name))
        return tab;
    if (query)
        return newPlainTab(name);
    return newChannelTab(name);
}

channeltab *ircsession::findChannelTab(const QString &name) const
{
    // A query tab can have the name of a channel. It must not get the channel's events.
    return qobject_cast<channeltab *>(findTab(name));
}

template <typename Visit>
void ircsession::forTabsWith(const QString &nick, Visit visit)
{
    for (const auto &roster : rosters) {
        if (roster->findUser(nick) == nullptr)
            continue;
        if (channeltab *tab = findChannelTab(roster->channelName()))
            visit(tab);
    }
}

void ircsession::parsePrivmsg(ircmessage *msg)
{
    const auto e = newEvent(event::kind::message, msg, msg->paramsFrom(1, true));
    irctab *tab = tabForMessage(msg);
    tab->privmsg(e.who.nick(), e.text);
    tab->happened(e);
}

void ircsession::parseNotice(ircmessage *msg)
{
    const QString sender = msg->prefix()->nick();
    const bool fromServer = !conn.isRegistered() || sender == conn.serverName();
    irctab *tab = nullptr;
    if (fromServer)
        tab = serverTab;
    else if (!addressedToMe(msg))
        tab = tabForMessage(msg);
    else if (tab = findTab(sender); tab == nullptr)
        tab = topTab;
    const auto e =
        newEvent(fromServer ? event::kind::reply : event::kind::notice, msg, msg->paramsFrom(1, true));
    tab->notice(sender, e.text);
    tab->happened(e);
}

void ircsession::parseMessage(ircmessage *msg)
{
    const auto e = newEvent(event::kind::reply, msg, msg->paramsFrom(1, true));
    serverTab->message(e.text);
    serverTab->happened(e);
}

void ircsession::parseCtcp(ircmessage *msg)
{
    const QString sender = msg->prefix()->nick();
    const QString keyword = msg->param(1, true).toLower();
    if (keyword == u"version") {
        serverTab->message(u"Recieved CTCP VERSION from " + sender);
        serverTab->happened(newEvent(event::kind::reply));
        if (mayAnswer())
            conn.sendCtcpReply(sender, u"VERSION Parlo " + parloVersion);
    } else if (keyword == u"action") {
        parseAction(msg);
    }
}

bool ircsession::mayAnswer()
{
    const qint64 now = clock.elapsed();
    if (answered.size() == maxAnswers && now - answered.first() < answerPeriodMs)
        return false;
    answered.append(now);
    if (answered.size() > maxAnswers)
        answered.removeFirst();
    return true;
}

void ircsession::parseAction(ircmessage *msg)
{
    const auto e = newEvent(event::kind::action, msg, msg->paramsFrom(2, true));
    irctab *tab = tabForMessage(msg);
    tab->action(e.who.nick(), e.text);
    tab->happened(e);
}

void ircsession::parseJoin(ircmessage *msg)
{
    const auto e = newEvent(event::kind::join, msg);
    if (e.ours) {
        newChannelTab(e.where);
    } else if (channeltab *tab = findChannelTab(e.where)) {
        tab->join(msg->prefix());
        tab->happened(e);
    }
}

void ircsession::parsePart(ircmessage *msg)
{
    const auto e = newEvent(event::kind::part, msg, msg->paramsFrom(1, true));
    irctab *found = findTab(e.where);
    auto *tab = qobject_cast<channeltab *>(found);
    if (found != tab)
        return;
    if (e.ours) {
        closeTab(tab);
    } else if (tab != nullptr) {
        tab->part(msg->prefix(), e.text);
        tab->happened(e);
    }
}

void ircsession::parseQuit(ircmessage *msg)
{
    auto e = newEvent(event::kind::quit, msg, msg->allParams(true));
    e.where.clear();
    if (e.ours)
        return;
    forTabsWith(e.who.nick(), [&](channeltab *tab) {
        tab->quit(msg->prefix(), e.text);
        tab->happened(e);
    });
}

void ircsession::parseKick(ircmessage *msg)
{
    const auto e = newEvent(event::kind::kick, msg, msg->paramsFrom(2, true));
    if (channeltab *tab = findChannelTab(e.where)) {
        tab->kick(msg->prefix(), msg->param(1, false), e.text);
        tab->happened(e);
    }
}

void ircsession::parseNick(ircmessage *msg)
{
    auto e = newEvent(event::kind::nick, msg, msg->param(0, true));
    e.where.clear();
    // The connection has already stored our new nick.
    e.ours = conn.identity.nick() == e.text;
    forTabsWith(e.who.nick(), [&](channeltab *tab) {
        tab->nick(e.who.nick(), e.text);
        tab->happened(e);
    });
}

void ircsession::parseMode(ircmode *m)
{
    if (conn.supports.same(m->target(), conn.identity.nick()))
        serverTab->showModes(m);
}

void ircsession::rpl_namreply(const QString &channel, QStringList *names)
{
    if (channeltab *tab = findChannelTab(channel))
        tab->names(names);
}

void ircsession::rpl_endofnames(const QString &channel)
{
    if (channeltab *tab = findChannelTab(channel))
        tab->endofnames();
}
