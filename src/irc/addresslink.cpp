// SPDX-License-Identifier: MIT
#include "addresslink.h"

#include "connection.h"
#include "ircmessage.h"

#include <utility>

using namespace Qt::StringLiterals;

addresslink::addresslink(connection &owner) : conn(owner)
{
    linkkeeper *keeper = &conn.keeper;
    QObject::connect(keeper, &linkkeeper::established, &conn,
                     [this] { conn.socket.adopt(conn.keeper.take()); });
    QObject::connect(keeper, &linkkeeper::dropWanted, &conn, &connection::dropLink);
    QObject::connect(keeper, &linkkeeper::status, &conn, &connection::status);
    QObject::connect(keeper, &linkkeeper::status, &conn, &connection::state);
    QObject::connect(keeper, &linkkeeper::pingWanted, &conn, [this] { conn.write(u"PING :parlo"_s); });
    QObject::connect(keeper, &linkkeeper::loginTimedOut, &conn, [this] {
        conn.link.progress.timeOut();
        conn.keeper.giveUp(conn.link.progress.fault());
    });
}

void addresslink::open(destination to, int port)
{
    const ircaddress address = to.address;
    to.port = address.port(port, to.port);
    // Whoever comes back to a server comes back to its channels.
    const QStringList wanted = address.channels() + to.channels;
    const bool sameHost = address.host() == conn.keeper.where().address.host();
    if (!sameHost)
        keys.clear();
    if (!sameHost || !wanted.isEmpty())
        conn.channels = wanted;
    for (const QString &channel : address.channels())
        conn.remember(channel, true);
    conn.keeper.start(to);
}

void addresslink::leave()
{
    conn.keeper.forget();
    conn.channels.clear();
    keys.clear();
}

QStringList addresslink::begin()
{
    conn.identity.setNick(nick.forNewLink(conn.identity.nick()));
    const linkkeeper &keeper = conn.keeper;
    return conn.link.progress.begin(conn.identity, keeper.where(), keeper.isEncrypted(), keeper.maxNick());
}

bool addresslink::follow(const ircmessage &msg)
{
    const QString command = msg.command();
    reclaimNick(msg);
    if (gathers(msg))
        return false;
    for (const QString &line : conn.link.progress.receive(msg))
        conn.write(line);
    if (refuses(msg))
        return false;
    if (command == "CAP"_L1)
        conn.keeper.stsOffered(conn.link.progress.sts());
    if (conn.link.progress.isLoggingIn())
        conn.keeper.loggingIn();
    else
        conn.keeper.loggedIn();
    if (command == "ERROR"_L1) {
        conn.keeper.errorSaid(msg.paramsFrom(0, true));
    } else if (command == "005"_L1) {
        conn.supports.learn(msg);
        conn.keeper.setMaxNick(conn.supports.maxNick);
    } else if (command == "376"_L1 || command == "422"_L1) {
        joinAll();
    }
    conn.link.mask.note(msg, conn.identity.nick());
    if (registration::refusesNick(command)) {
        nick.refused();
        // The nick that comes of it is told at the welcome.
        return conn.link.registered;
    }
    // What is between the server and the program is nothing to show.
    return command != "CAP"_L1 && command != "AUTHENTICATE"_L1 && command != "BATCH"_L1;
}

bool addresslink::gathers(const ircmessage &msg)
{
    if (netbatch whole; conn.link.batches.ends(msg, &whole)) {
        Q_EMIT conn.split(whole);
        return true;
    }
    return conn.link.batches.takes(msg, conn.supports);
}

bool addresslink::refuses(const ircmessage &msg)
{
    const linkfault fault = conn.link.progress.fault();
    // A ban (465) may come at any time, the rest only before the welcome.
    if (fault.what == linkfault::kind::none || (conn.link.registered && msg.command() != "465"_L1))
        return false;
    conn.keeper.giveUp(fault);
    return true;
}

void addresslink::reclaimNick(const ircmessage &msg)
{
    const bool frees = msg.command() == "QUIT"_L1 || msg.command() == "NICK"_L1;
    if (frees && conn.link.registered && !conn.isMe(nick.wanted()) &&
        conn.supports.same(msg.prefix()->nick(), nick.wanted()))
        conn.write(u"NICK " + nick.wanted());
}

void addresslink::joinAll()
{
    if (std::exchange(conn.link.joined, true))
        return;
    // A copy: a line may lead to another server after all.
    const QStringList wanted = conn.keeper.where().perform;
    for (const QString &line : wanted) {
        Q_EMIT conn.perform(line);
        if (!conn.isReady())
            return;
    }
    for (const QString &line : keys.join(conn.channels, conn.supports))
        conn.write(line);
}

void addresslink::typed(const QString &line)
{
    nick.typed(line);
    if (line.startsWith("NAMES "_L1, Qt::CaseInsensitive))
        conn.link.namesAsked += line.section(u' ', 1, 1, QString::SectionSkipEmpty).split(u',');
}

bool addresslink::takeNamesAsked(const QString &channel)
{
    const auto isIt = [&](const QString &asked) { return conn.supports.same(asked, channel); };
    return conn.link.namesAsked.removeIf(isIt) > 0;
}

void addresslink::welcomed()
{
    const registration &progress = conn.link.progress;
    nick.welcomed(progress.firstNick(), conn.identity.nick());
    conn.keeper.welcomed();
    if (const QString note = progress.nickNote(conn.identity.nick()); !note.isEmpty())
        Q_EMIT conn.status(note);
}
