// SPDX-License-Identifier: MIT
#include "ircsession.h"

#include "channeltab.h"
#include "connectbox.h"
#include "ircchannel.h"
#include "ircmessage.h"
#include "ircmode.h"
#include "ircuserbox.h"
#include "lastsession.h"
#include "nameslist.h"
#include "passwordprompt.h"
#include "plaintab.h"
#include "replysorter.h"
#include "tabwindow.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

struct membercommand
{
    memberaction what = memberaction::query;
    /// What the user would type in the tab of the channel, in front of the nick.
    QLatin1StringView typed;
};

constexpr membercommand memberCommands[] = {
    {memberaction::whois, "/whois "_L1},
    {memberaction::ignore, "/ignore "_L1},
    {memberaction::kick, "/kick "_L1},
    {memberaction::op, "/mode CHANNEL +o "_L1},
    {memberaction::deop, "/mode CHANNEL -o "_L1},
    {memberaction::voice, "/mode CHANNEL +v "_L1},
    {memberaction::devoice, "/mode CHANNEL -v "_L1},
};

} // namespace

ircsession::ircsession(tabwindow *window)
    : mainWindow(window),
      tabs(window, conn.supports, conn.manner, conn.identity),
      ignored(window->prefs().ignored),
      events(conn, window->prefs(), ignored),
      logs(conn, window),
      calls(window, tabs),
      typed({conn, tabs, ignored, logs, window})
{
    clock.start();
    conn.keeper.memory = &links;
    connect(&conn, &connection::disconnected, this, &ircsession::socketDisconnect);
    connect(&conn, &connection::errormsg, this, &ircsession::errormsg);
    connect(&conn, &connection::noAddress, this,
            [this](const QString &why) { tabs.frontTab()->message(why); });
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
    connect(&conn, &connection::dropped, tabs.serverTab, &irctab::message);
    connect(&conn, &connection::status, this, &ircsession::showStatus);
    connect(&conn, &connection::state, &tabs, &tabkeeper::setState);
    // Not from inside of a signal: the prompt runs an event loop.
    connect(&conn, &connection::passwordWanted, this, &ircsession::askAndConnect, Qt::QueuedConnection);
    connect(&conn, &connection::split, this, &ircsession::parseSplit);
    connect(&tabs, &tabkeeper::opened, this, &ircsession::wireTab);
    connect(&tabs, &tabkeeper::closed, this, [this](const QString &name) { conn.remember(name, false); });
    connect(&conn, &connection::namesListed, this, [this](const QString &channel) {
        if (channeltab *tab = tabs.findChannelTab(channel))
            tab->message(namesText(*tab->channel));
    });
    connect(&logs, &logbook::failed, this, &ircsession::showStatus);
    wireTab(tabs.serverTab, nullptr);
}

ircsession::~ircsession()
{
    lastsession here;
    // Between two tries as well: a handheld is often out of reach.
    if (mainWindow->prefs().reopens && conn.keeper.isActive() && !conn.wantedNick().isEmpty())
        here = {conn.keeper.where().address, conn.keeper.where().port, conn.wantedNick(), conn.channels};
    here.save();
}

void ircsession::wireTab(irctab *tab, channeltab *channel)
{
    logs.watch(tab);
    typed.watch(tab);
    connect(tab, &irctab::gotUserInput, this, &ircsession::userInput);
    connect(tab, &irctab::amTopTab, &calls, &attention::seen);
    if (channel == nullptr)
        return;
    connect(&conn, &connection::modes, channel, &irctab::modes);
    connect(&conn, &connection::mode, channel, &channeltab::mode);
    connect(channel->userBox, &ircuserbox::asked, this,
            [this, channel](memberaction what, const QString &nick) { memberAsked(what, nick, channel); });
}

// --- the user ---

void ircsession::memberAsked(memberaction what, const QString &nick, channeltab *tab)
{
    // In a classic session, no typed word does this.
    if (what == memberaction::query)
        return tabs.openQuery(nick);
    const auto *row = std::ranges::find(memberCommands, what, &membercommand::what);
    userInput(QString(row->typed).replace("CHANNEL"_L1, tab->tabName()) + nick, tab);
}

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
        return typed.take(text, tab);
    if (!text.startsWith(u'/')) {
        if (text.isEmpty())
            return;
        conn.sendPrivmsg(tab->tabName(), text);
        tab->privmsg(nick, text);
        return;
    }
    QString action;
    if (tab != tabs.serverTab && usercommands::isClose(text))
        return tabs.closeTab(tab);
    if (tab != tabs.serverTab && usercommands::isAction(text, &action))
        tab->action(nick, action);
    conn.userCommand(text, tab->tabName());
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
    auto e = events.make(event::kind::reply);
    e.forUs = true;
    tabs.serverTab->happened(e);
    tabs.serverTab->message(text);
}

void ircsession::socketDisconnect()
{
    const auto end = events.make(event::kind::disconnect);
    for (const auto &tab : tabs.tabs) {
        tab->happened(end);
        tab->message(u"Disconnected"_s);
    }
}

void ircsession::errormsg(const QString &text)
{
    tabs.topTab->happened(events.make(event::kind::reply));
    tabs.topTab->message(text);
}

// --- what happened ---

void ircsession::modesChanged(ircmode *m) const
{
    irctab *tab = tabs.findChannelTab(m->target());
    if (conn.supports.same(m->target(), conn.identity.nick()))
        tab = tabs.serverTab;
    if (tab == nullptr)
        return;
    tab->happened(events.make(*m));
}

irctab *ircsession::tabForMessage(const ircmessage *msg)
{
    // Our own words that come from elsewhere stand where they were said: another client of ours may have.
    const bool echo = conn.manner.quietTabs && events.sentByMe(msg);
    const bool query = events.addressedToMe(msg);
    const QString name =
        query && !echo ? msg->prefix()->nick() : conn.supports.channelOf(msg->param(0, true));
    if (irctab *tab = tabs.findTab(name))
        return tab;
    if (conn.isChannel(name) || (!query && !conn.manner.quietTabs))
        return tabs.newChannelTab(name);
    // Told to a whole server or network.
    if (!query && !echo)
        return tabs.serverTab;
    return tabs.newPlainTab(name, usercommands::place::query,
                            conn.manner.quietTabs ? irctab::opening::background : irctab::opening::front);
}

void ircsession::announce(irctab *tab, const struct event &talk)
{
    tab->happened(talk);
    calls.happened(talk, tab);
}

void ircsession::parsePrivmsg(ircmessage *msg)
{
    const auto e = events.make(event::kind::message, msg, msg->paramsFrom(1, true));
    if (e.ignored)
        return;
    irctab *tab = tabForMessage(msg);
    announce(tab, e);
    tab->privmsg(e.who.nick(), e.text);
}

void ircsession::parseNotice(ircmessage *msg)
{
    const QString sender = msg->prefix()->nick();
    const bool fromServer = !conn.isRegistered() || sender == conn.serverName();
    const auto e =
        events.make(fromServer ? event::kind::reply : event::kind::notice, msg, msg->paramsFrom(1, true));
    if (e.ignored)
        return;
    irctab *tab = nullptr;
    if (fromServer)
        tab = tabs.serverTab;
    else if (!events.addressedToMe(msg))
        tab = tabForMessage(msg);
    else if (tab = tabs.findTab(sender); tab == nullptr)
        tab = conn.manner.sortsReplies ? tabs.frontTab() : tabs.topTab;
    announce(tab, e);
    tab->notice(sender, e.text);
}

void ircsession::parseMessage(ircmessage *msg)
{
    if (conn.manner.sortsReplies)
        return showReply(*msg);
    const auto e = events.make(event::kind::reply, msg, msg->paramsFrom(1, true));
    tabs.serverTab->happened(e);
    tabs.serverTab->message(e.text);
}

void ircsession::parseCtcp(ircmessage *msg)
{
    const QString sender = msg->prefix()->nick();
    const QString keyword = msg->param(1, true).toLower();
    if (keyword == u"action")
        return parseAction(msg);
    // Another client of ours asks somebody.
    if (conn.manner.quietTabs && events.sentByMe(msg) && !events.addressedToMe(msg))
        return;
    const QString answer = ctcpanswers::answerTo(keyword, msg->paramsFrom(2, true), conn.manner.moreCommands);
    if (answer.isEmpty())
        return;
    const auto e = events.make(event::kind::reply, msg);
    if (e.old || e.ignored)
        return;
    tabs.serverTab->happened(e);
    tabs.serverTab->message(u"Recieved CTCP " + keyword.toUpper() + u" from " + sender);
    if (answers.mayAnswer(clock.elapsed()))
        conn.sendCtcpReply(sender, answer);
}

void ircsession::showReply(const ircmessage &msg)
{
    sortedreply reply = sortReply(msg, conn.supports);
    if (reply.where == sortedreply::place::none)
        return;
    irctab *tab = tabs.findChannelTab(reply.channel);
    if (reply.where == sortedreply::place::front || (tab == nullptr && reply.isError))
        tab = tabs.frontTab();
    else if (tab == nullptr)
        tab = tabs.serverTab;
    if (!reply.channel.isEmpty() && !conn.supports.same(tab->tabName(), reply.channel))
        reply.text.prepend(reply.channel + u": ");
    const auto e = events.make(event::kind::reply, &msg, reply.text);
    if (e.ignored)
        return;
    tab->happened(e);
    tab->message(reply.text);
}

void ircsession::parseSplit(const netbatch &people)
{
    const QString servers = u": " + people.servers.join(u' ');
    for (const auto &roster : tabs.rosters) {
        channeltab *tab = tabs.findChannelTab(roster->channelName());
        if (tab == nullptr || tab->channel != roster.get())
            continue;
        const QStringList joined = people.joinedIn(roster->channelName(), conn.supports);
        const qsizetype count = people.left ? roster->removeAll(people.nicks) : roster->joinAll(joined);
        if (count == 0)
            continue;
        tab->happened(events.make(people.left ? event::kind::quit : event::kind::join));
        const QString who = count == 1 ? u"1 person has "_s : u"%1 people have "_s.arg(count);
        tab->crowd(people.left, who + (people.left ? u"left" : u"joined") + servers);
    }
}

void ircsession::parseAction(ircmessage *msg)
{
    const auto e = events.make(event::kind::action, msg, msg->paramsFrom(2, true));
    if (e.ignored)
        return;
    irctab *tab = tabForMessage(msg);
    announce(tab, e);
    tab->action(e.who.nick(), e.text);
}

void ircsession::parseJoin(ircmessage *msg)
{
    const auto e = events.make(event::kind::join, msg);
    if (e.ours) {
        openJoined(e.where, msg->prefix());
    } else if (channeltab *tab = tabs.findChannelTab(e.where)) {
        tab->happened(e);
        tab->join(msg->prefix());
    }
}

void ircsession::openJoined(const QString &name, ircuser *us)
{
    if (conn.manner.quietTabs) {
        conn.remember(name, true);
        if (channeltab *tab = tabs.findChannelTab(name)) {
            tab->rejoined();
            return tab->join(us);
        }
    }
    tabs.newChannelTab(name);
}

void ircsession::parsePart(ircmessage *msg)
{
    const auto e = events.make(event::kind::part, msg, msg->paramsFrom(1, true));
    irctab *found = tabs.findTab(e.where);
    auto *tab = qobject_cast<channeltab *>(found);
    if (found != tab)
        return;
    if (e.ours) {
        conn.remember(e.where, false);
        tabs.closeTab(tab);
    } else if (tab != nullptr) {
        tab->happened(e);
        tab->part(msg->prefix(), e.text);
    }
}

void ircsession::parseQuit(ircmessage *msg)
{
    auto e = events.make(event::kind::quit, msg, msg->allParams(true));
    e.where.clear();
    if (e.ours)
        return;
    tabs.forTabsWith(e.who.nick(), [&](channeltab *tab) {
        tab->happened(e);
        tab->quit(msg->prefix(), e.text);
    });
}

void ircsession::parseKick(ircmessage *msg)
{
    auto e = events.make(event::kind::kick, msg, msg->paramsFrom(2, true));
    if (conn.supports.same(msg->param(1, true), conn.identity.nick())) {
        conn.remember(e.where, false);
        e.ignored = false; // we have to know why the talk ends
    }
    if (channeltab *tab = tabs.findChannelTab(e.where)) {
        tab->happened(e);
        tab->kick(msg->prefix(), msg->param(1, false), e.text);
    }
}

void ircsession::parseNick(ircmessage *msg)
{
    auto e = events.make(event::kind::nick, msg, msg->param(0, true));
    e.where.clear();
    // The connection has already stored our new nick.
    e.ours = conn.identity.nick() == e.text;
    tabs.forTabsWith(e.who.nick(), [&](channeltab *tab) {
        tab->happened(e);
        tab->nick(e.who.nick(), e.text);
    });
}

void ircsession::parseMode(ircmode *m)
{
    if (conn.supports.same(m->target(), conn.identity.nick()))
        tabs.serverTab->showModes(m);
}

void ircsession::rpl_namreply(const QString &channel, QStringList *names)
{
    if (channeltab *tab = tabs.findChannelTab(channel))
        tab->names(names);
}

void ircsession::rpl_endofnames(const QString &channel)
{
    if (channeltab *tab = tabs.findChannelTab(channel))
        tab->endofnames();
}
