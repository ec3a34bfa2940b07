// SPDX-License-Identifier: MIT
#include "connection.h"

#include "ircmessage.h"
#include "ircmode.h"
#include "ircport.h"

#include <QElapsedTimer>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

/// Lines are handled for so long in one turn of the event loop: common ones are some 1,000. The window stays
/// alive when a server sends as fast as it can, and whatever it sends.
constexpr qint64 msPerTurn = 12;
/// A line of 512 bytes (RFC 1459, 2.3) cannot change more modes; each is asked of every channel tab.
constexpr qsizetype maxModes = 512;
/// So many bytes of ours may wait for a server that does not read.
constexpr qint64 maxUnsent = 512LL * 1024;
constexpr QChar ctcpMark(1);

QString word(QTextStream &args)
{
    QString text;
    args >> text;
    return text;
}

/// All that is left, without the white space in front of it.
QString rest(QTextStream &args)
{
    args.skipWhiteSpace();
    return args.readLine();
}

} // namespace

connection::connection()
{
    connect(&socket, &socket::readyLine, this, &connection::readSocket);
    connect(&socket, &socket::connected, this, &connection::login);
    connect(&socket, &socket::disconnected, this, &connection::socketDisconnect);
    connect(&socket, &socket::lineTooLong, this, &connection::dropLongLine);
    nextTurn.setSingleShot(true);
    connect(&nextTurn, &QTimer::timeout, this, &connection::readSocket);
}

// --- the connection ---

void connection::connectToServer(const QString &host, int port, const QString &nick, const QString &user,
                                 const QString &realname)
{
    if (nick.isEmpty()) {
        Q_EMIT errormsg(u"Please specify a nickname with /nick"_s);
        return;
    }
    identity.setNick(nick);
    identity.setUser(user.isEmpty() ? u"parlo"_s : user);
    identity.setRealname(realname.isEmpty() ? u"Parlo Pocket Chat"_s : realname);
    if (host.isEmpty()) {
        Q_EMIT errormsg(u"Please specify a server"_s);
        return;
    }
    server = host;
    Q_EMIT debug(u"Connecting to Server..."_s);
    ended = false;
    socket.connectToHost(server, static_cast<quint16>(port == 0 ? ircPort : port));
}

void connection::login()
{
    Q_EMIT debug(u"Connected, Logging in..."_s);
    send(u"USER " + identity.user() + u" HOSTNAME " + server + u" :" + identity.realname());
    send(u"NICK " + identity.nick());
    if (!channels.isEmpty())
        send(u"JOIN " + channels.join(u','));
    loggedIn = true;
    welcomed = false;
}

void connection::readSocket()
{
    if (nextTurn.isActive())
        return;
    QElapsedTimer turn;
    // One line is handled in any case, however slow the machine is.
    for (turn.start(); socket.canReadLine();) {
        const QString line = QString::fromLatin1(socket.readLine());
        if (line.size() > socket::maxLine)
            return dropLongLine();
        Q_EMIT gotRawLine(line);
        parseLine(line);
        if (turn.hasExpired(msPerTurn))
            break;
    }
    if (socket.canReadLine())
        nextTurn.start(0);
    else if (ended)
        socketDisconnect();
}

void connection::socketDisconnect()
{
    // What came before the end is shown before it.
    ended = socket.canReadLine();
    if (ended)
        return readSocket();
    loggedIn = false;
    registered = false;
    m_serverName = ""_L1;
    Q_EMIT disconnected();
}

void connection::dropLongLine()
{
    giveUp(u"The server sent a line of over 64 KiB"_s);
}

// A server that makes us do this is broken or hostile, and would fill the memory.
void connection::giveUp(const QString &why)
{
    Q_EMIT dropped(why);
    if (!ended)
        return socket.abort();
    socket.close();
    socketDisconnect();
}

void connection::send(QString line)
{
    line.removeIf([](QChar c) { return c == u'\r' || c == u'\n' || c == u'\0'; });
    socket.sendLine(line);
    if (socket.bytesToWrite() > maxUnsent)
        giveUp(u"The server does not read what it is sent"_s);
}

// --- lines from the server ---

struct connection::reply
{
    QLatin1StringView command;
    void (connection::*handle)(ircmessage *) = nullptr;
};

// A signal is a member function: what needs no work of ours goes straight out.
const connection::reply connection::replies[] = {
    {"001"_L1, &connection::handleWelcome},
    {"PING"_L1, &connection::handlePing},
    {"PRIVMSG"_L1, &connection::handlePrivmsg},
    {"NOTICE"_L1, &connection::handleNotice},
    {"JOIN"_L1, &connection::join},
    {"PART"_L1, &connection::part},
    {"QUIT"_L1, &connection::quit},
    {"353"_L1, &connection::handleNames},
    {"366"_L1, &connection::handleEndOfNames},
    {"MODE"_L1, &connection::handleMode},
    {"NICK"_L1, &connection::handleNick},
    {"KICK"_L1, &connection::kick},
};

void connection::parseLine(const QString &line)
{
    ircmessage msg(line);
    for (const reply &r : replies) {
        if (msg.command() == r.command)
            return (this->*r.handle)(&msg);
    }
    Q_EMIT message(&msg);
}

void connection::handleWelcome(ircmessage *msg)
{
    // The server may have cut our nick, or we took another one before the welcome: its word holds.
    const QString welcomedNick = msg->param(0, true);
    if (!welcomed && !welcomedNick.isEmpty())
        identity.setNick(welcomedNick);
    welcomed = true;
    m_serverName = msg->prefix()->nick();
    registered = true;
    Q_EMIT message(msg);
}

void connection::handlePing(ircmessage *msg)
{
    Q_EMIT debug(u"PING? PONG!"_s);
    send(u"PONG " + msg->param(0, false));
}

void connection::handlePrivmsg(ircmessage *msg)
{
    Q_EMIT msg->isCtcp() ? ctcp(msg) : privmsg(msg);
}

void connection::handleNotice(ircmessage *msg)
{
    Q_EMIT msg->isCtcp() ? ctcpnotice(msg) : notice(msg);
}

void connection::handleNames(ircmessage *msg)
{
    QStringList names;
    for (int i = 3; i < msg->paramCount(); ++i) {
        names.append(msg->param(i, true));
        Q_EMIT debug(u"name: " + names.last());
    }
    Q_EMIT rpl_namreply(msg->param(2, false), &names);
}

void connection::handleEndOfNames(ircmessage *msg)
{
    Q_EMIT rpl_endofnames(msg->param(1, false));
}

void connection::handleMode(ircmessage *msg)
{
    ircmode all(*msg);
    Q_EMIT modes(&all);
    const QString where = u" on " + all.target() + u" by " + all.who()->nick();
    Q_EMIT debug(u"Got modes: " + all.modes() + u' ' + all.args() + where);

    // RFC 1459, 4.2.3.1: only on a channel do letters take arguments.
    const QLatin1StringView withArgument(isChannel(all.target()) ? "ovhkl" : "");
    QChar sign = u'+';
    int next = 0;
    for (const QChar c : all.modes().left(maxModes)) {
        if (c == u'+' || c == u'-') {
            sign = c;
            continue;
        }
        const bool takesArgument = withArgument.contains(c);
        const QString argument = takesArgument ? all.arg(next++) : QString();
        ircmode one(all, sign, c, argument);
        Q_EMIT mode(&one);
        Q_EMIT debug(u"Got mode: +" + QString(c) + (takesArgument ? u' ' + argument : QString()) + where);
    }
}

void connection::handleNick(ircmessage *msg)
{
    const QString oldNick = msg->prefix()->nick();
    const QString newNick = msg->param(0, true);
    if (oldNick == identity.nick())
        identity.setNick(newNick);
    Q_EMIT nick(msg);
    Q_EMIT debug(u"Got nick change - " + oldNick + u" -> " + newNick);
}

bool connection::isChannel(const QString &name)
{
    return name.startsWith(u'#') || name.startsWith(u'&');
}

// --- lines from the user ---

struct connection::command
{
    QLatin1StringView word;
    void (connection::*act)(QTextStream &args, const QString &target) = nullptr;
};

const connection::command connection::commands[] = {
    {"SERVER"_L1, &connection::serverCommand}, {"QUIT"_L1, &connection::quitCommand},
    {"QUOTE"_L1, &connection::quoteCommand},   {"MSG"_L1, &connection::msgCommand},
    {"JOIN"_L1, &connection::joinCommand},     {"PART"_L1, &connection::partCommand},
    {"MODE"_L1, &connection::modeCommand},     {"NICK"_L1, &connection::nickCommand},
    {"KICK"_L1, &connection::kickCommand},     {"CTCP"_L1, &connection::ctcpCommand},
    {"ME"_L1, &connection::meCommand},
};

QStringList connection::commandWords()
{
    QStringList words;
    for (const command &c : commands)
        words.append(c.word);
    return words;
}

void connection::userCommand(const QString &text, const QString &target)
{
    QString line = text.startsWith(u'/') ? text.mid(1) : text;
    QTextStream args(&line, QIODevice::ReadOnly);
    const QString name = word(args).toUpper();
    Q_EMIT debug(u"Got command: " + name);
    for (const command &c : commands) {
        if (name == c.word)
            return (this->*c.act)(args, target);
    }
}

void connection::serverCommand(QTextStream &args, const QString & /*target*/)
{
    const QString host = word(args);
    int port = 0;
    args.setIntegerBase(10); // a leading 0 is no octal number to a user
    args >> port;
    connectToServer(host, port, identity.nick(), identity.user(), identity.realname());
}

void connection::quitCommand(QTextStream &args, const QString & /*target*/)
{
    send(u"QUIT :" + rest(args));
}

void connection::quoteCommand(QTextStream &args, const QString & /*target*/)
{
    send(rest(args));
}

void connection::msgCommand(QTextStream &args, const QString & /*target*/)
{
    const QString to = word(args);
    sendPrivmsg(to, rest(args));
}

void connection::joinCommand(QTextStream &args, const QString & /*target*/)
{
    send(u"JOIN :" + rest(args));
}

void connection::partCommand(QTextStream &args, const QString &target)
{
    if (!isChannel(target))
        return;
    const QString channel = word(args);
    if (channel.isEmpty())
        send(u"PART " + target + u" :");
    else
        send(u"PART " + channel + u" :" + rest(args));
}

void connection::modeCommand(QTextStream &args, const QString & /*target*/)
{
    send(u"MODE " + rest(args));
}

void connection::nickCommand(QTextStream &args, const QString & /*target*/)
{
    const QString newNick = rest(args);
    if (loggedIn)
        send(u"NICK " + newNick);
    else
        identity.setNick(newNick);
}

void connection::kickCommand(QTextStream &args, const QString &target)
{
    if (!isChannel(target))
        return;
    const QString victim = word(args);
    const QString line = u"KICK " + target + u' ' + victim + u" :" + rest(args);
    Q_EMIT debug(line);
    send(line);
}

void connection::ctcpCommand(QTextStream &args, const QString & /*target*/)
{
    const QString to = word(args);
    sendCtcp(to, rest(args));
}

void connection::meCommand(QTextStream &args, const QString &target)
{
    sendCtcp(target, u"ACTION " + rest(args));
}

void connection::sendPrivmsg(const QString &target, const QString &text)
{
    send(u"PRIVMSG " + target + u" :" + text);
}

void connection::sendCtcp(const QString &target, const QString &text)
{
    sendPrivmsg(target, ctcpMark + text + ctcpMark);
}

void connection::sendCtcpReply(const QString &target, const QString &text)
{
    send(u"NOTICE " + target + u" :" + ctcpMark + text + ctcpMark);
}
