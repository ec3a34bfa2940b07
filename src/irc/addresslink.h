// SPDX-License-Identifier: MIT
#pragma once

#include "joinkeys.h"
#include "ournick.h"

#include <QStringList>

class connection;
class ircmessage;
struct destination;

/// What a connection does besides in a session by address: it follows the `keeper`, negotiates, joins what is ours, and
/// takes our nick back.
///
/// It belongs to its connection, and has no state of a single link: that is the connection's `link`.
class addresslink
{
public:
    explicit addresslink(connection &owner);

    /// Connects to `to`. `port` is what the user asked for, or 0; that of `to` is the preset's.
    void open(destination to, int port);
    /// Nothing of this may reach another server: not a channel's key, nor a try.
    void leave();
    /// The link stands: the lines to begin with.
    QStringList begin();
    /// Does what a line of the server asks for, besides its signal. False if there is nothing else to do with it.
    bool follow(const ircmessage &msg);
    /// Joins the channels, after the lines of "Perform". Once for each link.
    void joinAll();
    void welcomed();

    /// The user sends `line`, whose answer may concern us.
    void typed(const QString &line);
    /// The members of `channel` have been listed: whether the user had asked for them.
    bool takeNamesAsked(const QString &channel);

    ournick nick;
    joinkeys keys;

private:
    /// Whether the line is one of many of a netsplit, of which the connection tells at its end.
    bool gathers(const ircmessage &msg);
    /// Ends the try if the line says that we are not wanted.
    bool refuses(const ircmessage &msg);
    /// The nick that the user wants becomes free when its holder leaves or takes another.
    void reclaimNick(const ircmessage &msg);

    connection &conn;
};
