// SPDX-License-Identifier: MIT
#include "typing.h"

#include "connection.h"
#include "plaintab.h"
#include "tabkeeper.h"
#include "usercommands.h"

using namespace Qt::StringLiterals;

namespace {

QString tooLong()
{
    return u"Too long: not sent"_s;
}

QString noConnection()
{
    return u"Not sent: no connection"_s;
}

} // namespace

typing::typing(connection &connection, tabkeeper &keeper) : conn(connection), tabs(keeper)
{
    connect(&conn, &connection::said, this, &typing::showSaid);
    connect(&conn, &connection::notSaid, this, [this](const QString &target) {
        if (irctab *tab = tabs.findTab(target))
            tab->message(noConnection());
    });
    connect(&conn, &connection::tooLong, this, [this] { tabs.frontTab()->refuseInput(tooLong()); });
    connect(&conn, &connection::perform, this, &typing::perform);
}

void typing::take(const QString &text, irctab *tab)
{
    if (text.isEmpty())
        return;
    if (!text.startsWith(u'/') || text.startsWith(u"//"))
        return say(tab, text.startsWith(u'/') ? text.mid(1) : text, false);
    if (tab != tabs.serverTab && usercommands::isClose(text))
        return tabs.closeTab(tab);
    QString args;
    const QString word = usercommands::wordOf(text, &args);
    if (word == u"ME")
        return say(tab, args, true);
    QString nick;
    QString said;
    if (usercommands::isQuery(text, &nick, &said)) {
        tabs.openQuery(nick);
        return said.isEmpty() ? void() : say(tabs.findTab(nick), said, false);
    }
    if (!conn.userCommand(text, tab->tabName()))
        tab->refuseInput(noConnection());
}

void typing::perform(const QString &line)
{
    QString args;
    const QString word = line.startsWith(u'/') ? usercommands::wordOf(line, &args) : QString();
    if (word != u"SERVER" && word != u"QUIT")
        take(line, tabs.serverTab);
}

void typing::say(irctab *tab, const QString &text, bool action)
{
    if (tab == tabs.serverTab)
        tab->refuseInput(u"Not sent: this is nobody's tab"_s);
    else if (!conn.isReady())
        tab->refuseInput(noConnection());
    else if (!text.isEmpty() && !conn.say(tab->tabName(), text, action))
        tab->refuseInput(tooLong());
}

void typing::showSaid(const QString &target, const QString &text, bool action)
{
    irctab *tab = tabs.findTab(target);
    if (tab == nullptr)
        return;
    if (action)
        tab->action(conn.identity.nick(), text);
    else
        tab->privmsg(conn.identity.nick(), text);
}
