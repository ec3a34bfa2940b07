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
    if (host.isEmpty() && conn.keeper.connectNow())
        return;
    int port = 0;
    args.setIntegerBase(10); // for a user, a leading 0 does not mean octal
    args >> port;
    if (const ircaddress address(host); address.isValid() && !address.account().isEmpty()) {
        Q_EMIT conn.passwordWanted(host, port);
        return;
    }
    conn.connectToServer(host, port, conn.identity.nick(), conn.identity.user(), conn.identity.realname());
}

void quit(connection &conn, QTextStream &args, const QString & /*target*/)
{
    const bool sent = conn.send(u"QUIT :" + rest(args));
    // Too long for the server, which has been said.
    if (!sent && conn.isConnected())
        return;
    conn.keeper.quitting();
    // Only what was tried ends then.
    if (!sent)
        Q_EMIT conn.state(u"Not connected"_s);
}

void quote(connection &conn, QTextStream &args, const QString & /*target*/)
{
    conn.send(rest(args));
}

void msg(connection &conn, QTextStream &args, const QString & /*target*/)
{
    const QString to = word(args);
    const QString text = rest(args);
    if (!conn.manner.mindsSending)
        conn.sendPrivmsg(to, text);
    else if (!conn.say(to, text, false))
        Q_EMIT conn.tooLong();
}

void join(connection &conn, QTextStream &args, const QString & /*target*/)
{
    const QString channels = rest(args);
    if (conn.manner.moreCommands)
        conn.joinWithKeys(channels);
    else
        conn.send(u"JOIN :" + channels);
}

void part(connection &conn, QTextStream &args, const QString &target)
{
    const qint64 start = args.pos();
    const QString channel = word(args);
    if (conn.manner.moreCommands && !conn.isChannel(channel)) {
        args.seek(start);
        conn.send(u"PART " + target + u" :" + rest(args));
    } else if (channel.isEmpty()) {
        conn.send(u"PART " + target + u" :");
    } else {
        conn.send(u"PART " + channel + u" :" + rest(args));
    }
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
    else if (!newNick.isEmpty() || !conn.manner.moreCommands)
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

void raw(connection &conn, QTextStream &args, const QString &target)
{
    quote(conn, args, target);
}

void topic(connection &conn, QTextStream &args, const QString &target)
{
    const QString text = rest(args);
    conn.send(u"TOPIC " + target + (text.isEmpty() ? QString() : u" :" + text));
}

void whois(connection &conn, QTextStream &args, const QString &target)
{
    const QString nick = word(args);
    // Asked twice, the server of the nick itself answers, which knows how long it has been idle.
    const QString who = nick.isEmpty() ? target : nick;
    conn.send(u"WHOIS " + who + u' ' + who);
}

void names(connection &conn, QTextStream & /*args*/, const QString &target)
{
    conn.send(u"NAMES " + target);
}

void away(connection &conn, QTextStream &args, const QString & /*target*/)
{
    const QString text = rest(args);
    conn.send(text.isEmpty() ? u"AWAY"_s : QString(u"AWAY :" + text));
}

void invite(connection &conn, QTextStream &args, const QString &target)
{
    conn.send(u"INVITE " + word(args) + u' ' + target);
}

void trust(connection &conn, QTextStream & /*args*/, const QString & /*target*/)
{
    if (!conn.keeper.trust())
        Q_EMIT conn.status(u"Nothing to trust"_s);
}

// --- the table ---

/// The tabs that a command works in.
enum class scope { anywhere, channels, conversations };

/// Since when there is a word: the later ones are for sessions by address.
enum class era { classic, today };

/// Whether a word does something without a connection.
enum class link { needed, any };

struct usercommand
{
    QLatin1StringView word;
    scope where = scope::anywhere;
    era since = era::classic;
    link needs = link::needed;
    /// Null where the session does all of it.
    void (*act)(connection &conn, QTextStream &args, const QString &target) = nullptr;
};

constexpr QLatin1StringView closeWord = "CLOSE"_L1;
constexpr QLatin1StringView actionWord = "ME"_L1;

constexpr usercommand commands[] = {
    {"SERVER"_L1, scope::anywhere, era::classic, link::any, server},
    {"QUIT"_L1, scope::anywhere, era::classic, link::any, quit},
    {"QUOTE"_L1, scope::anywhere, era::classic, link::needed, quote},
    {"MSG"_L1, scope::anywhere, era::classic, link::needed, msg},
    {"JOIN"_L1, scope::anywhere, era::classic, link::needed, join},
    {"PART"_L1, scope::channels, era::classic, link::needed, part},
    {"MODE"_L1, scope::anywhere, era::classic, link::needed, mode},
    {"NICK"_L1, scope::anywhere, era::classic, link::any, nick},
    {"KICK"_L1, scope::channels, era::classic, link::needed, kick},
    {"CTCP"_L1, scope::anywhere, era::classic, link::needed, ctcp},
    // The session shows it first, but for the tab of the server.
    {actionWord, scope::anywhere, era::classic, link::needed, me},
    {closeWord, scope::conversations, era::classic, link::any},
    {"QUERY"_L1, scope::anywhere, era::today, link::any},
    {"IGNORE"_L1, scope::anywhere, era::today, link::any},
    {"UNIGNORE"_L1, scope::anywhere, era::today, link::any},
    {"LOG"_L1, scope::anywhere, era::today, link::any},
    {"TOPIC"_L1, scope::channels, era::today, link::needed, topic},
    {"WHOIS"_L1, scope::anywhere, era::today, link::needed, whois},
    {"NAMES"_L1, scope::channels, era::today, link::needed, names},
    {"INVITE"_L1, scope::channels, era::today, link::needed, invite},
    {"AWAY"_L1, scope::anywhere, era::today, link::needed, away},
    {"RAW"_L1, scope::anywhere, era::today, link::needed, raw},
    {"TRUST"_L1, scope::anywhere, era::today, link::any, trust},
};

/// Whether `text` begins with such a word and a space behind it; if so, `args` becomes the rest.
bool begins(const QString &text, QLatin1StringView word, QString *args)
{
    const QString start = u'/' + word + u' ';
    if (!text.startsWith(start, Qt::CaseInsensitive))
        return false;
    *args = text.mid(start.size());
    return true;
}

} // namespace

bool usercommands::run(connection &conn, const QString &text, const QString &target)
{
    QString line = text.startsWith(u'/') ? text.mid(1) : text;
    QTextStream args(&line, QIODevice::ReadOnly);
    const QString name = word(args).toUpper();
    Q_EMIT conn.debug(u"Got command: " + name);
    for (const usercommand &c : commands) {
        if (name != c.word || (c.since == era::today && !conn.manner.moreCommands))
            continue;
        if (c.act == nullptr || (c.where == scope::channels && !conn.isChannel(target)))
            return true;
        if (c.needs == link::needed && !conn.isReady())
            return false;
        c.act(conn, args, target);
        return true;
    }
    if (!conn.manner.moreCommands || name.isEmpty())
        return true;
    if (conn.isReady())
        conn.send(line.trimmed());
    return conn.isReady();
}

QStringList usercommands::wordsIn(place where, bool more)
{
    QStringList words;
    for (const usercommand &c : commands) {
        if ((c.since == era::classic || more) && (c.where == scope::anywhere || where == place::channel ||
                                                  (where == place::query && c.where == scope::conversations)))
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
    return begins(text, actionWord, action);
}

QString usercommands::wordOf(const QString &text, QString *args)
{
    QString line = text.startsWith(u'/') ? text.mid(1) : text;
    QTextStream stream(&line, QIODevice::ReadOnly);
    QString name = word(stream).toUpper();
    *args = rest(stream);
    return name;
}
