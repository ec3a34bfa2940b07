// SPDX-License-Identifier: MIT
#pragma once

#include "ircuser.h"
#include "isupport.h"
#include "registration.h"
#include "socket.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

class ircmessage;
class ircmode;

/// The link to the one IRC server (RFC 1459).
///
/// It registers, answers PING, turns each line of the server into a signal, and writes what we send. The
/// records in the signals live until the emit returns: receivers copy what they keep. A line is handled
/// completely before the next one is read.
class connection : public QObject
{
    Q_OBJECT

public:
    connection();

    /// Connects to `server` and registers as `nick`. `port` 0 means `ircPort`; an empty user or real name
    /// means the default. An empty nick or server is reported through errormsg(), and nothing is connected.
    /// Otherwise an earlier connection is dropped.
    void connectToServer(const QString &server, int port, const QString &nick, const QString &user,
                         const QString &realname);

    /// The server's name for itself in its welcome (001); empty before that and after the end of the
    /// connection.
    QString serverName() const { return m_serverName; }
    /// Whether the server has welcomed us (001).
    bool isRegistered() const { return registered; }

    /// Runs a slash command that was typed in the tab named `target`; see usercommands.
    void userCommand(const QString &text, const QString &target);
    void sendPrivmsg(const QString &target, const QString &text);
    /// Sends a CTCP request, between two U+0001 (CTCP draft, 2).
    void sendCtcp(const QString &target, const QString &text);
    /// Answers a CTCP request by NOTICE, which nobody answers, so two clients cannot go on without end.
    void sendCtcpReply(const QString &target, const QString &text);

    /// Writes `line` as exactly one line: removes line ends and U+0000, which may be in a stranger's text or
    /// in the clipboard. Does not check whether we are connected.
    void send(QString line);

    /// Whether `name` is a channel.
    bool isChannel(const QString &name) const { return supports.isChannel(name); }

    /// The rules of the server.
    isupport supports;
    /// The local user: nick, user name and real name; the host is not used.
    ircuser identity;
    /// What login() joins.
    QStringList channels;
    class socket socket;
    /// Whether the registration lines have been sent.
    bool loggedIn = false;

public Q_SLOTS:
    void login();
    void readSocket();
    void socketDisconnect();

Q_SIGNALS:
    /// Each line as received, before it is parsed. For diagnosis: nothing is connected to it.
    void gotRawLine(const QString &line);
    void disconnected();
    /// Texts for diagnosis: nothing is connected to it.
    void debug(const QString &text);
    void privmsg(ircmessage *msg);
    void notice(ircmessage *msg);
    void message(ircmessage *msg);
    void join(ircmessage *msg);
    void part(ircmessage *msg);
    void quit(ircmessage *msg);
    void kick(ircmessage *msg);
    void rpl_namreply(const QString &channel, QStringList *names);
    void rpl_endofnames(const QString &channel);
    /// A whole MODE line.
    void modes(ircmode *m);
    /// One letter of a MODE line, with its argument.
    void mode(ircmode *m);
    void nick(ircmessage *msg);
    /// An error, as a text for the user.
    void errormsg(const QString &text);
    void ctcp(ircmessage *msg);
    void ctcpnotice(ircmessage *msg);
    /// The reason why we end the connection.
    void dropped(const QString &why);

private:
    struct reply;
    static const reply replies[];

    void dropLongLine();
    /// Ends the connection from our side, and emits dropped().
    void giveUp(const QString &why);
    /// Whether the server has closed the connection, but disconnected() is pending until its lines are read.
    bool isEnding() const;
    void parseLine(const QString &line);
    void handleWelcome(ircmessage *msg);
    void handlePing(ircmessage *msg);
    void handlePrivmsg(ircmessage *msg);
    void handleNotice(ircmessage *msg);
    void handleNames(ircmessage *msg);
    void handleEndOfNames(ircmessage *msg);
    void handleMode(ircmessage *msg);
    void handleNick(ircmessage *msg);

    QString server;
    QString m_serverName;
    bool registered = false;
    /// The stage of this connection. The flags above may still be those of the connection before it.
    registration progress;
    /// Continues reading in the next turn of the event loop.
    QTimer nextTurn;
};
