// SPDX-License-Identifier: MIT
//
// Whatever the user types, and whatever the tab is called that it is typed into: one line at most.

#include "fuzz.h"

#include "connection.h"

void fuzz(const QByteArray &input)
{
    const qsizetype end = qMax<qsizetype>(input.indexOf('\n'), 0);
    const QString target = QString::fromUtf8(input.first(end));
    const QString text = QString::fromUtf8(input.sliced(end)).mid(1);
    connection conn;
    peer server(conn.socket);
    conn.identity.setNick(target);
    conn.identity.setRealname(text);
    conn.channels = QStringList{target, text};
    conn.login();
    require(server.received() == 3, "a registration is three lines");
    conn.sendPrivmsg(target, text);
    conn.sendCtcp(target, text);
    conn.sendCtcpReply(target, text);
    require(server.received() == 3, "a text, a request and an answer are a line each");
    server.send("PING " + QByteArray(input).replace('\n', '\r') + '\n');
    require(server.received() == 1, "the answer to a PING is one line");
    conn.userCommand(text, target);
    require(server.received() <= 1, "a command is one line at most");
}
