// SPDX-License-Identifier: MIT
#include "typing.h"

#include "connection.h"
#include "ignorelist.h"
#include "logbook.h"
#include "plaintab.h"
#include "secret.h"
#include "tabkeeper.h"
#include "tabwindow.h"
#include "usercommands.h"

#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace {

/// So many lines of the server one paste may take: with their pace, they are on their way for two minutes and a half.
constexpr qsizetype maxPasted = 100;

QString tooLong()
{
    return u"Too long: not sent"_s;
}

QString noConnection()
{
    return u"Not sent: no connection"_s;
}

bool isCommand(const QString &typed)
{
    return typed.startsWith(u'/') && !typed.startsWith(u"//");
}

/// What is said by a text that is no command.
QString spoken(const QString &typed)
{
    return typed.startsWith(u'/') ? typed.mid(1) : typed;
}

} // namespace

struct typing::word
{
    QLatin1StringView name;
    void (typing::*act)(irctab *tab, const QString &args) = nullptr;
};

// The table in usercommands has these words as well, for completion.
const typing::word typing::words[] = {
    {"ME"_L1, &typing::act},        {"QUERY"_L1, &typing::query},
    {"IGNORE"_L1, &typing::ignore}, {"UNIGNORE"_L1, &typing::unignore},
    {"LOG"_L1, &typing::log},
};

typing::typing(const rooms &ofSession)
    : conn(ofSession.conn),
      tabs(ofSession.tabs),
      ignored(ofSession.ignored),
      logs(ofSession.logs),
      window(ofSession.window)
{
    connect(&conn, &connection::said, this, &typing::showSaid);
    connect(&conn, &connection::notSaid, this, &typing::giveBack);
    connect(&conn, &connection::tooLong, this, [this] { tabs.frontTab()->refuseInput(tooLong()); });
    connect(&conn, &connection::perform, this, &typing::perform);
}

void typing::watch(irctab *tab)
{
    if (tab == tabs.serverTab)
        return;
    tab->mindLines([this, tab](const QString &typed) { return piecesOf(tab, typed); },
                   [this, tab](const QStringList &lines) { sayLines(tab, lines); });
}

void typing::take(const QString &text, irctab *tab)
{
    if (text.isEmpty())
        return;
    if (!isCommand(text))
        return say(tab, tab, spoken(text), false);
    if (tab != tabs.serverTab && usercommands::isClose(text))
        return tabs.closeTab(tab);
    QString args;
    const QString name = usercommands::wordOf(text, &args);
    for (const word &w : words) {
        if (name == w.name)
            return (this->*w.act)(tab, args);
    }
    if (!conn.userCommand(text, tab->tabName()))
        tab->refuseInput(noConnection());
}

void typing::perform(const QString &line)
{
    QString args;
    const QString name = line.startsWith(u'/') ? usercommands::wordOf(line, &args) : QString();
    if (name == u"SERVER" || name == u"QUIT")
        return;
    // Nobody is there to see that it would leave without TLS.
    if (!conn.keeper.isPrivate() && withoutSecrets({}, line) != line)
        return tabs.serverTab->message(u"Not sent: a password needs ircs://"_s);
    take(line, tabs.serverTab);
}

// --- the words ---

void typing::act(irctab *tab, const QString &args)
{
    say(tab, tab, args, true);
}

void typing::query(irctab *tab, const QString &args)
{
    const QString nick = args.section(u' ', 0, 0);
    const QString text = args.section(u' ', 1).trimmed();
    if (nick.isEmpty())
        return;
    if (!text.isEmpty() && !conn.isReady())
        return tab->refuseInput(noConnection());
    tabs.openQuery(nick);
    if (!text.isEmpty())
        say(tab, tabs.findTab(nick), text, false);
}

void typing::ignore(irctab *tab, const QString &args)
{
    const QString list = ignored.entries().join(u' ');
    if (args.isEmpty())
        return tab->message(list.isEmpty() ? u"Nobody is ignored"_s : u"Ignored: " + list);
    for (const QString &who : args.split(u' ', Qt::SkipEmptyParts)) {
        const bool added = ignored.add(who, conn.supports);
        tab->message((added ? u"Ignored from now on: "_s : u"Nothing changes: "_s) + ignorelist::maskOf(who));
    }
    window->prefer(&preferences::ignored, ignored.entries());
}

void typing::unignore(irctab *tab, const QString &args)
{
    for (const QString &who : args.split(u' ', Qt::SkipEmptyParts)) {
        const bool removed = ignored.remove(who, conn.supports);
        tab->message((removed ? u"No longer ignored: "_s : u"Nothing changes: "_s) + ignorelist::maskOf(who));
    }
    window->prefer(&preferences::ignored, ignored.entries());
}

void typing::log(irctab *tab, const QString & /*args*/)
{
    tab->message(logs.whereabouts());
}

// --- what is said ---

QString typing::obstacle(const irctab *tab) const
{
    if (tab == tabs.serverTab)
        return u"Not sent: this is nobody's tab"_s;
    return conn.isReady() ? QString() : noConnection();
}

void typing::say(irctab *typedIn, const irctab *to, const QString &text, bool action)
{
    if (const QString why = obstacle(to); !why.isEmpty())
        typedIn->refuseInput(why);
    else if (!text.isEmpty() && !conn.say(to->tabName(), text, action))
        typedIn->refuseInput(tooLong());
}

void typing::sayLines(irctab *tab, const QStringList &lines)
{
    qsizetype pieces = 0;
    for (const QString &line : lines)
        pieces += conn.piecesOf(tab->tabName(), line, false);
    if (const QString why = obstacle(tab); !why.isEmpty())
        tab->refuseInput(why);
    else if (pieces > maxPasted || !conn.say(tab->tabName(), lines))
        tab->refuseInput(tooLong());
}

qsizetype typing::piecesOf(const irctab *tab, const QString &typed) const
{
    if (!isCommand(typed))
        return conn.piecesOf(tab->tabName(), spoken(typed), false);
    QString args;
    const bool action = usercommands::wordOf(typed, &args) == u"ME";
    return action ? conn.piecesOf(tab->tabName(), args, true) : 1;
}

void typing::giveBack(const QString &target, const QString &text, bool action)
{
    irctab *tab = tabs.findTab(target);
    if (tab == nullptr)
        return;
    tab->message(noConnection());
    const QString start = action ? u"/me "_s : text.startsWith(u'/') ? u"/"_s : QString();
    if (tab->input->text().isEmpty())
        tab->input->setText(start + text);
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
