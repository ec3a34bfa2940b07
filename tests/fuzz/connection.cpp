// SPDX-License-Identifier: MIT
//
// A roster stays sorted, whatever the server says about the members of the channel. A text of the user sends
// at most one line, in every tab. A line of the input comes from the server, unless it begins with ">", for a
// text of the user, in which "\r" means a line end, or "=", for the tab that the text is typed into.

#include "fuzz.h"

#include "connection.h"
#include "ircchannel.h"
#include "ircmessage.h"
#include "ircmode.h"

#include <QCoreApplication>
#include <QTcpSocket>

#include <algorithm>
#include <sys/socket.h>

using namespace Qt::StringLiterals;

void fuzz(const QByteArray &input)
{
    connection conn;
    QTcpSocket server;
    int ends[2];
    require(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) == 0, "there are sockets");
    auto device = std::make_unique<QTcpSocket>();
    QTcpSocket *client = device.get();
    client->setSocketDescriptor(ends[0]);
    server.setSocketDescriptor(ends[1]);
    // The number of lines that the connection has written since the last call.
    const auto written = [&] {
        client->flush();
        server.waitForReadyRead(0);
        return linesOnWire(server.readAll()).size();
    };
    ircchannel channel(u"#parlo"_s, conn.supports);
    bool listing = false;
    qsizetype letters = 0;
    const auto on = [&](auto signal, auto change) {
        QObject::connect(&conn, signal, &conn, change);
        QObject::connect(&conn, signal, &conn, [&] {
            require(listing || std::is_sorted(channel.roster()->begin(), channel.roster()->end()),
                    "a roster is sorted");
        });
    };
    on(&connection::join, [&](ircmessage *m) { channel.join(m->prefix()); });
    on(&connection::part, [&](ircmessage *m) { channel.remove(m->prefix()); });
    on(&connection::nick, [&](ircmessage *m) { channel.nick(m->prefix()->nick(), m->param(0, true)); });
    on(&connection::rpl_namreply, [&](const QString &, QStringList *names) {
        channel.names(names);
        listing = true;
    });
    on(&connection::rpl_endofnames, [&] {
        channel.endNames();
        listing = false;
    });
    on(&connection::mode, [&](ircmode *m) {
        require(--letters >= 0 && m->modes().size() == 2, "a single mode is one sign and one letter");
        channel.mode(m);
    });
    on(&connection::modes,
       [&](ircmode *m) { letters = m->modes().remove(u'+').remove(u'-').left(512).size(); });
    on(&connection::gotRawLine, [&] { require(letters == 0, "each letter is one mode"); });

    // A line of that length is written at once.
    const QString text = QString::fromUtf8(input.left(4096));
    conn.identity.setNick(text);
    conn.identity.setRealname(text);
    conn.channels = QStringList{text, text};
    conn.socket.adopt(std::move(device));
    require(written() == 3, "a registration is three lines");
    conn.sendPrivmsg(text, text);
    conn.sendCtcp(text, text);
    conn.sendCtcpReply(text, text);
    require(written() == 3, "a text, a request and an answer are a line each");

    QString tab;
    for (const QByteArray &line : input.split('\n')) {
        const QString rest = QString::fromUtf8(line.mid(1)).replace(u'\r', u"\r\n"_s);
        if (line.startsWith('=')) {
            tab = rest;
        } else if (line.startsWith('>')) {
            conn.userCommand(rest, tab);
            require(written() <= 1, "a command is one line at most");
        } else {
            server.write(line + '\n');
            server.flush();
            client->waitForReadyRead(0);
            while (conn.socket.canReadLine())
                QCoreApplication::processEvents();
            require(written() <= (line.contains("PING") ? 1 : 0), "only a PING is answered");
        }
    }
}
