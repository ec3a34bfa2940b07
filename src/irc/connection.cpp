// SPDX-License-Identifier: MIT
#include "connection.h"

#include "ctcp.h"
#include "ircmessage.h"
#include "ircmode.h"
#include "ircport.h"
#include "textsplitter.h"
#include "usercommands.h"

#include <QElapsedTimer>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// The maximum time for handling lines in one turn of the event loop: about 1,000 common ones. So the window
/// still reacts when a server sends as fast as it can.
constexpr qint64 msPerTurn = 12;
/// In bytes: the maximum of unsent data while a server does not read.
constexpr qint64 maxUnsent = 512LL * 1024;
/// CR LF.
constexpr qsizetype lineEndBytes = 2;

} // namespace

connection::connection()
{
    connect(&socket, &socket::readyLine, this, &connection::readSocket);
    connect(&socket, &socket::connected, this, &connection::login);
    connect(&socket, &socket::disconnected, this, &connection::socketDisconnect);
    connect(&socket, &socket::failed, this, &connection::tellFailure);
    connect(&socket, &socket::lineTooLong, this, &connection::dropLongLine);
    nextTurn.setSingleShot(true);
    connect(&nextTurn, &QTimer::timeout, this, &connection::readSocket);
    connect(&socket, &socket::heard, this, [this] {
        if (keeper.isActive())
            keeper.heard();
    });
    connect(&pending, &outbox::due, this, [this](const outbox::piece &next) {
        if (write(next.line()))
            Q_EMIT said(next.target, next.text, next.action);
        else
            Q_EMIT notSaid(next.target, next.text, next.action);
    });
}

// --- the connection ---

void connection::connectToServer(const QString &host, int wantedPort, const QString &nick,
                                 const QString &user, const QString &realname)
{
    // Whatever becomes of this: a password that was meant for one server must not wait for the next.
    destination to = std::exchange(details, {});
    if (nick.isEmpty()) {
        Q_EMIT errormsg(u"Please specify a nickname with /nick"_s);
        return;
    }
    if (const QString error = ircaddress::errorOf(host); !error.isEmpty()) {
        Q_EMIT noAddress(error);
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
    const bool byName = !ircaddress::isMeant(host);
    if (!byName || manner.negotiates) {
        // A classic link that is left for another ends in silence.
        loggedIn = loggedIn && manner.negotiates;
        dropLink();
    }
    if (!byName) {
        to.address = ircaddress(host);
        useManners(manners::today());
        return byAddress.open(to, wantedPort);
    }
    if (manner.negotiates)
        byAddress.leave();
    useManners({});
    link.progress.connecting();
    port = static_cast<quint16>(wantedPort == 0 ? ircPort : wantedPort);
    socket.connectToHost(server, port);
    Q_EMIT state(u"Connecting to " + server + u'…');
}

void connection::useManners(const manners &wanted)
{
    manner = wanted;
    socket.codec = manner.codec;
    supports = {};
}

void connection::dropLink()
{
    socket.drop();
    endLink();
}

void connection::login()
{
    Q_EMIT debug(u"Connected, Logging in..."_s);
    supports = {};
    const QStringList lines =
        manner.negotiates ? byAddress.begin() : link.progress.begin(identity, server, channels);
    for (const QString &line : lines)
        write(line);
    loggedIn = true;
    if (!manner.mindsSending)
        Q_EMIT state({});
}

void connection::readSocket()
{
    if (nextTurn.isActive())
        return;
    QElapsedTimer turn;
    // At least one line is handled, however slow the machine is.
    for (turn.start(); socket.canReadLine();) {
        const QString line = socket.takeLine();
        if (line.isNull())
            return;
        Q_EMIT gotRawLine(line);
        parseLine(line);
        if (turn.hasExpired(msPerTurn))
            break;
    }
    if (socket.canReadLine())
        nextTurn.start(0);
    else if (isEnding())
        socketDisconnect();
}

void connection::socketDisconnect()
{
    // Lines that arrived before the end are shown before it.
    if (socket.canReadLine())
        return readSocket();
    endLink();
    if (manner.negotiates)
        keeper.ended();
}

// A session by address that was never welcomed has nothing to tell its tabs.
void connection::endLink()
{
    const bool told = loggedIn && (!manner.negotiates || link.registered);
    link = {};
    loggedIn = false;
    for (const outbox::piece &rest : pending.clear())
        Q_EMIT notSaid(rest.target, rest.text, rest.action);
    Q_EMIT state(u"Not connected"_s);
    if (told)
        Q_EMIT disconnected();
}

void connection::tellFailure(QAbstractSocket::SocketError error)
{
    if (link.progress.reached() == registration::stage::connecting)
        Q_EMIT state(linkfault(linkfault::kindOf(error), server, port).text);
}

bool connection::isEnding() const
{
    return socket.state() == QAbstractSocket::UnconnectedState &&
           link.progress.reached() > registration::stage::connecting;
}

void connection::dropLongLine()
{
    giveUp(u"The server sent a line of over 64 KiB"_s);
}

// A server that makes us do this is broken or hostile, and would fill the memory.
void connection::giveUp(const QString &why)
{
    Q_EMIT dropped(why);
    if (!isEnding())
        return socket.abort();
    socket.close();
    socketDisconnect();
}

bool connection::send(const QString &line)
{
    if (manner.mindsSending && isConnected() && !fits(line)) {
        Q_EMIT tooLong();
        return false;
    }
    if (manner.negotiates)
        byAddress.typed(line);
    return write(line);
}

bool connection::write(QString line)
{
    line.removeIf([](QChar c) { return c == u'\r' || c == u'\n' || c == u'\0'; });
    if (manner.mindsSending && (!isConnected() || !fits(line)))
        return false;
    socket.sendLine(line);
    if (socket.unsent() <= maxUnsent)
        return true;
    giveUp(u"The server does not read what it is sent"_s);
    return false;
}

bool connection::fits(const QString &line) const
{
    return manner.codec.bytes(line).size() <= supports.maxLine - lineEndBytes;
}

// --- lines from the server ---

struct connection::reply
{
    QLatin1StringView command;
    void (connection::*handle)(ircmessage *) = nullptr;
};

// A signal is a member function, so a row can name one directly.
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
    ircmessage msg = manner.taggedLines ? ircmessage::tagged(line) : ircmessage(line);
    if (manner.negotiates && !byAddress.follow(msg))
        return;
    for (const reply &r : replies) {
        if (msg.command() == r.command)
            return (this->*r.handle)(&msg);
    }
    Q_EMIT message(&msg);
}

void connection::handleWelcome(ircmessage *msg)
{
    // The server may have cut our nick, or we may have changed it before the welcome: the server's nick is
    // right.
    const QString welcomedNick = msg->param(0, true);
    if (link.progress.welcome() && !welcomedNick.isEmpty())
        identity.setNick(welcomedNick);
    link.serverName = msg->prefix()->nick();
    link.registered = true;
    if (manner.negotiates)
        byAddress.welcomed();
    Q_EMIT state({});
    Q_EMIT message(msg);
}

void connection::handlePing(ircmessage *msg)
{
    Q_EMIT debug(u"PING? PONG!"_s);
    // Where the trailing text is taken as it is, it is one parameter.
    write(u"PONG " + (manner.taggedLines ? msg->paramsFrom(0, false) : msg->param(0, false)));
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
        // Two spaces in a row are no name.
        if (manner.taggedLines && msg->param(i, true).isEmpty())
            continue;
        names.append(msg->param(i, true));
        Q_EMIT debug(u"name: " + names.last());
    }
    Q_EMIT rpl_namreply(msg->param(2, false), &names);
}

void connection::handleEndOfNames(ircmessage *msg)
{
    const QString channel = msg->param(1, false);
    Q_EMIT rpl_endofnames(channel);
    if (byAddress.takeNamesAsked(channel))
        Q_EMIT namesListed(channel);
}

void connection::handleMode(ircmessage *msg)
{
    ircmode all(*msg);
    Q_EMIT modes(&all);
    const QString where = u" on " + all.target() + u" by " + all.who()->nick();
    Q_EMIT debug(u"Got modes: " + all.modes() + u' ' + all.args() + where);

    for (const modeletter &l : all.letters(supports)) {
        ircmode one(all, l.sign, l.letter, l.argument);
        Q_EMIT mode(&one);
        Q_EMIT debug(u"Got mode: +" + QString(l.letter) + (l.takesArgument ? u' ' + l.argument : QString()) +
                     where);
    }
}

void connection::handleNick(ircmessage *msg)
{
    const QString oldNick = msg->prefix()->nick();
    const QString newNick = msg->param(0, true);
    if (isMe(oldNick)) {
        identity.setNick(newNick);
        if (manner.negotiates)
            byAddress.nick.renamed(newNick);
    }
    Q_EMIT nick(msg);
    Q_EMIT debug(u"Got nick change - " + oldNick + u" -> " + newNick);
}

// --- lines from us ---

bool connection::userCommand(const QString &text, const QString &target)
{
    return usercommands::run(*this, text, target);
}

void connection::joinWithKeys(const QString &channelsAndKeys)
{
    send(byAddress.keys.join(channelsAndKeys, supports));
}

void connection::remember(const QString &channel, bool in)
{
    if (!manner.negotiates)
        return;
    channels.removeIf([&](const QString &c) { return supports.same(c, channel); });
    if (in)
        channels.append(channel);
}

qsizetype connection::roomFor(const QString &target) const
{
    return textsplitter::room(supports.maxLine, link.mask.with(identity.nick()), u"PRIVMSG"_s, target);
}

qsizetype connection::piecesOf(const QString &target, const QString &text, bool action) const
{
    return outbox::cut({target, text, action}, roomFor(target)).size();
}

bool connection::say(const QString &target, const QString &text, bool action)
{
    return pending.say({{target, text, action}}, roomFor(target));
}

bool connection::say(const QString &target, const QStringList &texts)
{
    QList<outbox::piece> all;
    for (const QString &text : texts)
        all.append({target, text, false});
    return pending.say(all, roomFor(target));
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
    write(u"NOTICE " + target + u" :" + ctcpMark + text + ctcpMark);
}
