// SPDX-License-Identifier: MIT
//
// What the server says of a channel's members goes into a roster, which stays in order.

#include "fuzz.h"

#include "connection.h"
#include "ircchannel.h"
#include "ircmessage.h"
#include "ircmode.h"

#include <algorithm>

using namespace Qt::StringLiterals;

void fuzz(const QByteArray &input)
{
    connection conn;
    peer server(conn.socket);
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
    on(&connection::rpl_endofnames, [&] {
        channel.endNames();
        listing = false;
    });
    on(&connection::mode, [&](ircmode *m) {
        require(--letters >= 0 && m->modes().size() == 2, "a single mode is one sign and one letter");
        channel.mode(m);
    });
    const QObject *c = &conn;
    QObject::connect(&conn, &connection::rpl_namreply, c, [&](const QString &, QStringList *names) {
        channel.names(names);
        listing = true;
    });
    QObject::connect(&conn, &connection::modes, c,
                     [&](ircmode *m) { letters = m->modes().left(512).remove(u'+').remove(u'-').size(); });
    QObject::connect(&conn, &connection::gotRawLine, c,
                     [&] { require(letters == 0, "each letter is one mode"); });
    server.send(input + "\nPING\n");
    require(server.received() <= input.count("PING") + 1, "only a PING is answered");
}
