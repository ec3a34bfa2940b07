// SPDX-License-Identifier: MIT
#include "usercommands.h"

#include "connection.h"

#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

QString word(QTextStream &args)
{
    QString text;
    args >> text;
    return text;
}

/// The rest of the line, without leading white space.
QString rest(QTextStream &args)
{
    args.skipWhiteSpace();
    return args.readLine();
}

// --- the commands, in the order of the table ---

void server(connection &conn, QTextStream &args, const QString & /*target*/)
{
    const QString host = word(args);
    int port = 0;
    args.setIntegerBase(10); // for a user, a leading 0 does not mean octal
    args >> port;
    conn.connectToServer(host, port, conn.identity.nick(), conn.identity.user(), conn.identity.realname());
}

void quit(connection &conn, QTextStream &args, const QString & /*target*/)
{
    conn.send(u"QUIT :" + rest(args));
}

void quote(connection &conn, QTextStream &args, const QString & /*target*/)
{
    conn.send(rest(args));
}

void msg(connection &conn, QTextStream &args, const QString & /*target*/)
{
    const QString to = word(args);
    conn.sendPrivmsg(to, rest(args));
}

void join(connection &conn, QTextStream &args, const QString & /*target*/)
{
    conn.send(u"JOIN :" + rest(args));
}

void part(connection &conn, QTextStream &args, const QString &target)
{
    const QString channel = word(args);
    if (channel.isEmpty())
        conn.send(u"PART " + target + u" :");
    else
        conn.send(u"PART " + channel + u" :" + rest(args));
}

void mode(connection &conn, QTextStream &args, const QString & /*target*/)
{
    conn.send(u"MODE " + rest(args));
}

void nick(connection &conn, QTextStream &args, const QString & /*target*/)
{
    const QString newNick = rest(args);
    if (conn.loggedIn)
        conn.send(u"NICK " + newNick);
    else
        conn.identity.setNick(newNick);
}

void kick(connection &conn, QTextStream &args, const QString &target)
{
    const QString victim = word(args);
    const QString line = u"KICK " + target + u' ' + victim + u" :" + rest(args);
    Q_EMIT conn.debug(line);
    conn.send(line);
}

void ctcp(connection &conn, QTextStream &args, const QString & /*target*/)
{
    const QString to = word(args);
    conn.sendCtcp(to, rest(args));
}

void me(connection &conn, QTextStream &args, const QString &target)
{
    conn.sendCtcp(target, u"ACTION " + rest(args));
}

// --- the table ---

/// The tabs that a command works in.
enum class scope { anywhere, channels, conversations };

struct usercommand
{
    QLatin1StringView word;
    scope where = scope::anywhere;
    /// Null if the session does all of it.
    void (*act)(connection &conn, QTextStream &args, const QString &target) = nullptr;
};

constexpr QLatin1StringView closeWord = "CLOSE"_L1;
constexpr QLatin1StringView actionWord = "ME"_L1;

constexpr usercommand commands[] = {
    {"SERVER"_L1, scope::anywhere, server},
    {"QUIT"_L1, scope::anywhere, quit},
    {"QUOTE"_L1, scope::anywhere, quote},
    {"MSG"_L1, scope::anywhere, msg},
    {"JOIN"_L1, scope::anywhere, join},
    {"PART"_L1, scope::channels, part},
    {"MODE"_L1, scope::anywhere, mode},
    {"NICK"_L1, scope::anywhere, nick},
    {"KICK"_L1, scope::channels, kick},
    {"CTCP"_L1, scope::anywhere, ctcp},
    // The session has already shown it, except in the tab of the server.
    {actionWord, scope::anywhere, me},
    {closeWord, scope::conversations},
};

} // namespace

void usercommands::run(connection &conn, const QString &text, const QString &target)
{
    QString line = text.startsWith(u'/') ? text.mid(1) : text;
    QTextStream args(&line, QIODevice::ReadOnly);
    const QString name = word(args).toUpper();
    Q_EMIT conn.debug(u"Got command: " + name);
    for (const usercommand &c : commands) {
        if (name != c.word)
            continue;
        if (c.act != nullptr && (c.where != scope::channels || conn.isChannel(target)))
            c.act(conn, args, target);
        return;
    }
}

QStringList usercommands::wordsIn(place where)
{
    QStringList words;
    for (const usercommand &c : commands) {
        if (c.where == scope::anywhere || where == place::channel ||
            (where == place::query && c.where == scope::conversations))
            words.append(u'/' + QString(c.word).toLower());
    }
    return words;
}

bool usercommands::isClose(const QString &text)
{
    return text.startsWith(u'/' + closeWord, Qt::CaseInsensitive);
}

bool usercommands::isAction(const QString &text, QString *action)
{
    const QString start = u'/' + actionWord + u' ';
    if (!text.startsWith(start, Qt::CaseInsensitive))
        return false;
    *action = text.mid(start.size());
    return true;
}
