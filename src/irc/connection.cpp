// SPDX-License-Identifier: MIT
#include "connection.h"

#include "ctcp.h"
#include "ircmessage.h"
#include "ircmode.h"
#include "ircport.h"
#include "textsplitter.h"
#include "usercommands.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;

namespace {

/// The maximum time for handling lines in one turn of the event loop: about 1,000 common ones. So the window
/// still reacts when a server sends as fast as it can.
constexpr qint64 msPerTurn = 12;
/// A line of 512 bytes (RFC 1459, 2.3) cannot contain more letters. Every channel tab gets each of them.
constexpr int maxModes = 512;
/// In bytes: the maximum of unsent data while a server does not read.
constexpr qint64 maxUnsent = 512LL * 1024;
/// CR LF.
constexpr qsizetype lineEndBytes = 2;
/// What makes a text an action: "ACTION ", and a mark before and behind it.
constexpr qsizetype actionBytes = 9;

} // namespace

connection::connection()
{
    connect(&socket, &socket::readyLine, this, &connection::readSocket);
    connect(&socket, &socket::connected, this, &connection::login);
    connect(&socket, &socket::disconnected, this, &connection::socketDisconnect);
    connect(&socket, &socket::lineTooLong, this, &connection::dropLongLine);
    nextTurn.setSingleShot(true);
    connect(&nextTurn, &QTimer::timeout, this, &connection::readSocket);
    connect(&socket, &socket::heard, this, [this] {
        if (keeper.isActive())
            keeper.heard();
    });
    connect(&keeper, &linkkeeper::established, this, [this] { socket.adopt(keeper.take()); });
    connect(&keeper, &linkkeeper::dropWanted, this, &connection::dropLink);
    connect(&keeper, &linkkeeper::status, this, &connection::status);
    connect(&keeper, &linkkeeper::pingWanted, this, [this] { socket.sendLine(u"PING :parlo"_s); });
    connect(&keeper, &linkkeeper::loginTimedOut, this, [this] {
        progress.timeOut();
        keeper.giveUp(progress.fault());
    });
    connect(&pending, &outbox::due, this, [this](const outbox::piece &next) {
        const QString text = next.action ? ctcpMark + u"ACTION " + next.text + ctcpMark : next.text;
        if (send(u"PRIVMSG " + next.target + u" :" + text))
            Q_EMIT said(next.target, next.text, next.action);
        else
            Q_EMIT notSaid(next.target);
    });
}

// --- the connection ---

void connection::connectToServer(const QString &host, int port, const QString &nick, const QString &user,
                                 const QString &realname)
{
    if (nick.isEmpty()) {
        Q_EMIT errormsg(u"Please specify a nickname with /nick"_s);
        return;
    }
    const ircaddress address = ircaddress::isMeant(host) ? ircaddress(host) : ircaddress();
    if (const QString error = ircaddress::errorOf(host); !error.isEmpty()) {
        Q_EMIT errormsg(error);
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
    progress.connecting();
    if (address.isValid())
        return openAddress(address, port);
    if (manner.negotiates)
        leaveAddress();
    useManners({});
    socket.connectToHost(server, static_cast<quint16>(port == 0 ? ircPort : port));
}

// Nothing of a session by address may reach another server: not what waits to be said, nor a channel's key.
void connection::leaveAddress()
{
    keeper.forget();
    loggedIn = false;
    dropLink();
    channels.clear();
    keys.clear();
}

void connection::openAddress(const ircaddress &address, int port)
{
    // What stood before ends in silence, as in a classic session.
    loggedIn = false;
    dropLink();
    useManners(manners::today());
    destination to = std::exchange(details, {});
    // Whoever comes back to a server comes back to its channels.
    const QStringList wanted = address.channels() + to.channels;
    const bool sameHost = address.host() == keeper.where().address.host();
    if (!sameHost)
        keys.clear();
    if (!sameHost || !wanted.isEmpty())
        channels = wanted;
    to.address = address;
    for (const QString &channel : address.channels())
        remember(channel, true);
    to.port = address.port(port, to.port);
    keeper.start(to);
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
    mask = {};
    joined = false;
    // What we had to take last time is not what is asked for again.
    if (manner.negotiates && identity.nick() == givenNick)
        identity.setNick(wantedNick);
    const QStringList lines =
        manner.negotiates ? progress.begin(identity, keeper.where(), keeper.isEncrypted(), keeper.maxNick())
                          : progress.begin(identity, server, channels);
    for (const QString &line : lines)
        send(line);
    loggedIn = true;
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
    const bool told = loggedIn && (!manner.negotiates || registered);
    progress.end();
    loggedIn = false;
    registered = false;
    m_serverName = ""_L1;
    batches.clear();
    for (const outbox::piece &piece : pending.clear())
        Q_EMIT notSaid(piece.target);
    if (told)
        Q_EMIT disconnected();
}

bool connection::isEnding() const
{
    return socket.state() == QAbstractSocket::UnconnectedState &&
           progress.reached() > registration::stage::connecting;
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

bool connection::send(QString line)
{
    if (manner.mindsSending && socket.state() != QAbstractSocket::ConnectedState)
        return false;
    line.removeIf([](QChar c) { return c == u'\r' || c == u'\n' || c == u'\0'; });
    if (manner.mindsSending && manner.codec.bytes(line).size() > supports.maxLine - lineEndBytes) {
        Q_EMIT tooLong();
        return false;
    }
    socket.sendLine(line);
    if (socket.unsent() > maxUnsent)
        giveUp(u"The server does not read what it is sent"_s);
    return true;
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
    if (manner.negotiates && !follow(&msg))
        return;
    for (const reply &r : replies) {
        if (msg.command() == r.command)
            return (this->*r.handle)(&msg);
    }
    Q_EMIT message(&msg);
}

bool connection::follow(ircmessage *msg)
{
    const QString command = msg->command();
    if (command == "QUIT"_L1 || command == "NICK"_L1)
        reclaimNick(*msg);
    if (netbatch whole; batches.ends(*msg, &whole)) {
        Q_EMIT split(whole);
        return false;
    }
    if (batches.takes(*msg))
        return false;
    for (const QString &line : progress.receive(*msg))
        send(line);
    // A ban (465) may come at any time, the rest only before the welcome.
    if (const linkfault fault = progress.fault();
        fault.what != linkfault::kind::none && (!registered || command == "465"_L1)) {
        keeper.giveUp(fault);
        return false;
    }
    if (command == "CAP"_L1)
        keeper.stsOffered(progress.sts());
    if (progress.isLoggingIn())
        keeper.loggingIn();
    else
        keeper.loggedIn();
    if (command == "ERROR"_L1)
        keeper.errorSaid(msg->paramsFrom(0, true));
    else if (command == "005"_L1)
        learnRules(*msg);
    else if (command == "376"_L1 || command == "422"_L1)
        joinAll();
    noteMask(*msg);
    // What is between the server and the program is nothing to show; the nick that comes of it is told at the welcome.
    if (!registered && registration::refusesNick(command))
        return false;
    return command != "CAP"_L1 && command != "AUTHENTICATE"_L1 && command != "BATCH"_L1;
}

void connection::learnRules(const ircmessage &msg)
{
    supports.learn(msg);
    keeper.setMaxNick(supports.maxNick);
}

void connection::joinAll()
{
    if (std::exchange(joined, true))
        return;
    // A copy: a line may lead to another server after all.
    const QStringList wanted = keeper.where().perform;
    for (const QString &line : wanted) {
        Q_EMIT perform(line);
        if (!isReady())
            return;
    }
    for (const QString &line : registration::joinLines(channels))
        send(line);
}

// The nick that the user wants becomes free when its holder leaves or takes another.
void connection::reclaimNick(const ircmessage &msg)
{
    if (registered && !isMe(wantedNick) && supports.same(msg.prefix()->nick(), wantedNick))
        send(u"NICK " + wantedNick);
}

// What the server puts in front of our lines is in the lines that it sends us of ourselves.
void connection::noteMask(const ircmessage &msg)
{
    if (msg.prefix()->nick() != identity.nick() || msg.prefix()->host().isEmpty())
        return;
    mask = *msg.prefix();
    if (msg.command() == "CHGHOST"_L1) {
        mask.setUser(msg.param(0, true));
        mask.setHost(msg.param(1, true));
    }
}

void connection::handleWelcome(ircmessage *msg)
{
    // The server may have cut our nick, or we may have changed it before the welcome: the server's nick is
    // right.
    const QString welcomedNick = msg->param(0, true);
    if (progress.welcome() && !welcomedNick.isEmpty())
        identity.setNick(welcomedNick);
    m_serverName = msg->prefix()->nick();
    registered = true;
    if (manner.negotiates) {
        wantedNick = progress.firstNick();
        givenNick = identity.nick();
        keeper.welcomed();
        if (const QString note = progress.nickNote(identity.nick()); !note.isEmpty())
            Q_EMIT status(note);
    }
    Q_EMIT message(msg);
}

void connection::handlePing(ircmessage *msg)
{
    Q_EMIT debug(u"PING? PONG!"_s);
    // Where the trailing text is taken as it is, it is one parameter.
    send(u"PONG " + (manner.taggedLines ? msg->paramsFrom(0, false) : msg->param(0, false)));
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
    Q_EMIT rpl_endofnames(msg->param(1, false));
}

void connection::handleMode(ircmessage *msg)
{
    ircmode all(*msg);
    Q_EMIT modes(&all);
    const QString where = u" on " + all.target() + u" by " + all.who()->nick();
    Q_EMIT debug(u"Got modes: " + all.modes() + u' ' + all.args() + where);

    const bool onChannel = isChannel(all.target());
    QChar sign = u'+';
    int next = 0;
    int letters = 0;
    for (const QChar c : all.modes()) {
        if (c == u'+' || c == u'-') {
            sign = c;
            continue;
        }
        if (++letters > maxModes)
            break;
        const bool takesArgument = onChannel && supports.takesArgument(sign, c);
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
    if (oldNick == identity.nick()) {
        identity.setNick(newNick);
        wantedNick = newNick;
        givenNick = newNick;
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
    const QStringList names = channelsAndKeys.section(u' ', 0, 0).split(u',', Qt::SkipEmptyParts);
    const QStringList given = channelsAndKeys.section(u' ', 1).trimmed().split(u',', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < given.size() && i < names.size(); ++i)
        keys.insert(names[i].toLower(), given[i]);
    send(u"JOIN " + names.join(u',') + (given.isEmpty() ? QString() : u' ' + given.join(u',')));
}

void connection::remember(const QString &channel, bool in)
{
    if (!manner.negotiates)
        return;
    channels.removeIf([&](const QString &c) { return supports.same(c.section(u' ', 0, 0), channel); });
    const QString key = keys.value(channel.toLower());
    if (in)
        channels.append(key.isEmpty() ? channel : channel + u' ' + key);
}

bool connection::say(const QString &target, const QString &text, bool action)
{
    ircuser from = mask;
    from.setNick(identity.nick());
    const qsizetype room =
        textsplitter::room(supports.maxLine, from, u"PRIVMSG"_s, target) - (action ? actionBytes : 0);
    QList<outbox::piece> pieces;
    for (const QString &piece : textsplitter::split(text, room))
        pieces.append({target, piece, action});
    if (!pieces.isEmpty())
        pending.add(pieces);
    return !pieces.isEmpty();
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
