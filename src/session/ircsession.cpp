// SPDX-License-Identifier: MIT
#include "ircsession.h"

#include "channeltab.h"
#include "connectbox.h"
#include "ircchannel.h"
#include "ircmessage.h"
#include "ircmode.h"
#include "ircuserbox.h"
#include "mention.h"
#include "passwordprompt.h"
#include "plaintab.h"
#include "replysorter.h"
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
/// An older line is one that was kept for us: it shows its time and is no news.
constexpr qint64 maxAgeMs = 60'000;

} // namespace

ircsession::ircsession(tabwindow *window)
    : mainWindow(window), serverTab(newPlainTab(u"Server"_s, usercommands::place::server)), topTab(serverTab)
{
    clock.start();
    conn.keeper.memory = &links;
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
    connect(&conn, &connection::status, this, &ircsession::showStatus);
    connect(&conn, &connection::said, this, &ircsession::showSaid);
    connect(&conn, &connection::notSaid, this, [this](const QString &target) {
        if (irctab *tab = findTab(target))
            tab->message(notSent());
    });
    // Not from inside of a signal: the prompt runs an event loop.
    connect(&conn, &connection::passwordWanted, this, &ircsession::askAndConnect, Qt::QueuedConnection);
    connect(&conn, &connection::tooLong, this, [this] { frontTab()->refuseInput(tooLong()); });
    connect(&conn, &connection::perform, this, &ircsession::performLine);
    connect(&conn, &connection::split, this, &ircsession::parseSplit);
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
    added->follow(conn.supports, conn.manner);
    connect(added, &irctab::gotUserInput, this, &ircsession::userInput);
    return added;
}

plaintab *ircsession::newPlainTab(const QString &name, usercommands::place where, irctab::opening how)
{
    plaintab *tab = adopt(std::make_unique<plaintab>(mainWindow, name, where, how));
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

irctab *ircsession::frontTab() const
{
    const auto found =
        std::find_if(tabs.begin(), tabs.end(), [](const auto &tab) { return tab->isInFront(); });
    return found == tabs.end() ? serverTab : found->get();
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
    conn.remember(closed->tabName(), false);
    tabs.erase(found);
    if (topTab == closed.get())
        topTab = serverTab;
}

void ircsession::newTopTab(irctab *tab)
{
    topTab = tab;
}

// --- the user ---

void ircsession::showConnectDialog(const QString &address)
{
    QString nick;
    QString server;
    int port = 0;
    QStringList channels;
    connectbox dialog(&nick, &server, &port, &channels);
    if (!address.isEmpty())
        dialog.proposeServer(address);
    else
        dialog.proposeLast();
    dialog.exec();
    if (dialog.result() != QDialog::Accepted || nick.isEmpty() || server.isEmpty())
        return;
    conn.channels = channels;
    conn.details = dialog.details();
    if (ircaddress::isMeant(server))
        port = 0;
    conn.connectToServer(server, port, nick, conn.identity.user(), conn.identity.realname());
}

void ircsession::userInput(const QString &text, irctab *tab)
{
    const QString nick = conn.identity.nick();
    if (conn.manner.mindsSending)
        return userInputToday(text, tab);
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

void ircsession::userInputToday(const QString &text, irctab *tab)
{
    QString said;
    QString nick;
    const bool command = text.startsWith(u'/') && !text.startsWith(u"//");
    const bool action = command && usercommands::wordOf(text, &said) == u"ME";
    if (text.isEmpty())
        return;
    if (tab != serverTab && command && usercommands::isClose(text))
        return closeTab(tab);
    if (command && usercommands::isQuery(text, &nick, &said)) {
        openQuery(nick);
        return said.isEmpty() ? void() : sayIn(findTab(nick), said, false);
    }
    if (command && !action) {
        if (!conn.userCommand(text, tab->tabName()))
            tab->refuseInput(notSent());
        return;
    }
    if (!action)
        said = text.startsWith(u"//") ? text.mid(1) : text;
    sayIn(tab, said, action);
}

void ircsession::sayIn(irctab *tab, const QString &said, bool action)
{
    if (tab == serverTab)
        tab->refuseInput(u"Not sent: this is nobody's tab"_s);
    else if (!conn.isReady())
        tab->refuseInput(notSent());
    else if (!said.isEmpty() && !conn.say(tab->tabName(), said, action))
        tab->refuseInput(tooLong());
}

void ircsession::showSaid(const QString &target, const QString &text, bool action)
{
    irctab *tab = findTab(target);
    if (tab == nullptr)
        return;
    if (action)
        tab->action(conn.identity.nick(), text);
    else
        tab->privmsg(conn.identity.nick(), text);
}

// A line of the preset, which must not lead away from this connection.
void ircsession::performLine(const QString &line)
{
    QString args;
    const QString word = line.startsWith(u'/') ? usercommands::wordOf(line, &args) : QString();
    if (word != u"SERVER" && word != u"QUIT")
        userInput(line, serverTab);
}

void ircsession::askAndConnect(const QString &address, int port)
{
    QString password;
    if (!askPassword(mainWindow, ircaddress(address).account(), &password))
        return;
    conn.details = {};
    conn.details.password = password;
    conn.connectToServer(address, port, conn.identity.nick(), conn.identity.user(), conn.identity.realname());
}

void ircsession::showStatus(const QString &text)
{
    auto e = newEvent(event::kind::reply);
    e.forUs = true;
    serverTab->happened(e);
    serverTab->message(text);
}

QString ircsession::tooLong()
{
    return u"Too long: not sent"_s;
}

QString ircsession::notSent()
{
    return u"Not sent: no connection"_s;
}

void ircsession::socketDisconnect()
{
    const auto end = newEvent(event::kind::disconnect);
    for (const auto &tab : tabs) {
        tab->happened(end);
        tab->message(u"Disconnected"_s);
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
    topTab->happened(newEvent(event::kind::reply));
    topTab->message(text);
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
    e.ours = what != event::kind::reply && sentByMe(msg);
    if (const QDateTime said = msg->tags().time(); conn.manner.taggedLines && said.isValid()) {
        e.old = e.when - said.toMSecsSinceEpoch() > maxAgeMs;
        e.when = e.old ? said.toMSecsSinceEpoch() : e.when;
    }
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
    return conn.isMe(msg->param(0, false));
}

bool ircsession::sentByMe(const ircmessage *msg) const
{
    return conn.isMe(msg->prefix()->nick());
}

irctab *ircsession::tabForMessage(const ircmessage *msg)
{
    // Our own words that come from elsewhere stand where they were said: another client of ours may have.
    const bool echo = conn.manner.quietTabs && sentByMe(msg);
    const bool query = addressedToMe(msg);
    const QString name =
        query && !echo ? msg->prefix()->nick() : conn.supports.channelOf(msg->param(0, true));
    if (irctab *tab = findTab(name))
        return tab;
    if (conn.isChannel(name) || (!query && !conn.manner.quietTabs))
        return newChannelTab(name);
    // Told to a whole server or network.
    if (!query && !echo)
        return serverTab;
    return newPlainTab(name, usercommands::place::query,
                       conn.manner.quietTabs ? irctab::opening::background : irctab::opening::front);
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
    tab->happened(e);
    tab->privmsg(e.who.nick(), e.text);
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
    tab->happened(e);
    tab->notice(sender, e.text);
}

void ircsession::parseMessage(ircmessage *msg)
{
    if (conn.manner.sortsReplies)
        return showReply(*msg);
    const auto e = newEvent(event::kind::reply, msg, msg->paramsFrom(1, true));
    serverTab->happened(e);
    serverTab->message(e.text);
}

void ircsession::parseCtcp(ircmessage *msg)
{
    const QString sender = msg->prefix()->nick();
    const QString keyword = msg->param(1, true).toLower();
    if (keyword == u"action")
        return parseAction(msg);
    // Another client of ours asks somebody.
    if (conn.manner.quietTabs && sentByMe(msg) && !addressedToMe(msg))
        return;
    const QString answer = ctcpanswers::answerTo(keyword, msg->paramsFrom(2, true), conn.manner.moreCommands);
    if (answer.isEmpty())
        return;
    const auto e = newEvent(event::kind::reply, msg);
    if (e.old)
        return;
    serverTab->happened(e);
    serverTab->message(u"Recieved CTCP " + keyword.toUpper() + u" from " + sender);
    if (answers.mayAnswer(clock.elapsed()))
        conn.sendCtcpReply(sender, answer);
}

void ircsession::showReply(const ircmessage &msg)
{
    sortedreply reply = sortReply(msg, conn.supports);
    if (reply.where == sortedreply::place::none)
        return;
    irctab *tab = findChannelTab(reply.channel);
    if (reply.where == sortedreply::place::front || (tab == nullptr && reply.isError))
        tab = frontTab();
    else if (tab == nullptr)
        tab = serverTab;
    if (!reply.channel.isEmpty() && !conn.supports.same(tab->tabName(), reply.channel))
        reply.text.prepend(reply.channel + u": ");
    tab->happened(newEvent(event::kind::reply, &msg, reply.text));
    tab->message(reply.text);
}

void ircsession::parseSplit(const netbatch &people)
{
    const QString servers = u": " + people.servers.join(u' ');
    for (const auto &roster : rosters) {
        channeltab *tab = findChannelTab(roster->channelName());
        if (tab == nullptr || tab->channel != roster.get())
            continue;
        const QStringList joined = people.joined.value(roster->channelName().toLower());
        const qsizetype count = people.left ? roster->removeAll(people.nicks) : roster->joinAll(joined);
        if (count == 0)
            continue;
        tab->happened(newEvent(people.left ? event::kind::quit : event::kind::join));
        tab->crowd(people.left,
                   u"%1 people have "_s.arg(count) + (people.left ? u"left" : u"joined") + servers);
    }
}

void ircsession::parseAction(ircmessage *msg)
{
    const auto e = newEvent(event::kind::action, msg, msg->paramsFrom(2, true));
    irctab *tab = tabForMessage(msg);
    tab->happened(e);
    tab->action(e.who.nick(), e.text);
}

void ircsession::parseJoin(ircmessage *msg)
{
    const auto e = newEvent(event::kind::join, msg);
    if (e.ours) {
        openJoined(e.where, msg->prefix());
    } else if (channeltab *tab = findChannelTab(e.where)) {
        tab->happened(e);
        tab->join(msg->prefix());
    }
}

void ircsession::openJoined(const QString &name, ircuser *us)
{
    if (conn.manner.quietTabs) {
        conn.remember(name, true);
        if (channeltab *tab = findChannelTab(name)) {
            tab->rejoined();
            return tab->join(us);
        }
    }
    newChannelTab(name);
}

void ircsession::parsePart(ircmessage *msg)
{
    const auto e = newEvent(event::kind::part, msg, msg->paramsFrom(1, true));
    irctab *found = findTab(e.where);
    auto *tab = qobject_cast<channeltab *>(found);
    if (found != tab)
        return;
    if (e.ours) {
        conn.remember(e.where, false);
        closeTab(tab);
    } else if (tab != nullptr) {
        tab->happened(e);
        tab->part(msg->prefix(), e.text);
    }
}

void ircsession::parseQuit(ircmessage *msg)
{
    auto e = newEvent(event::kind::quit, msg, msg->allParams(true));
    e.where.clear();
    if (e.ours)
        return;
    forTabsWith(e.who.nick(), [&](channeltab *tab) {
        tab->happened(e);
        tab->quit(msg->prefix(), e.text);
    });
}

void ircsession::parseKick(ircmessage *msg)
{
    const auto e = newEvent(event::kind::kick, msg, msg->paramsFrom(2, true));
    if (conn.supports.same(msg->param(1, true), conn.identity.nick()))
        conn.remember(e.where, false);
    if (channeltab *tab = findChannelTab(e.where)) {
        tab->happened(e);
        tab->kick(msg->prefix(), msg->param(1, false), e.text);
    }
}

void ircsession::parseNick(ircmessage *msg)
{
    auto e = newEvent(event::kind::nick, msg, msg->param(0, true));
    e.where.clear();
    // The connection has already stored our new nick.
    e.ours = conn.identity.nick() == e.text;
    forTabsWith(e.who.nick(), [&](channeltab *tab) {
        tab->happened(e);
        tab->nick(e.who.nick(), e.text);
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
