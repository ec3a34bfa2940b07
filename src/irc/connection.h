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
/// It registers, answers PING, turns every line of the server into one typed signal, and writes what we send. The records
/// in the signals live until the emit returns: receivers copy what they keep. A line is handled completely before the
/// next is read.
class connection : public QObject
{
    Q_OBJECT

public:
    connection();

    /// Registers as `nick` with `server`; `port` 0 is `ircPort`, an empty user or real name takes the default.
    /// Reports an empty nick or server through errormsg() and does nothing else then. An earlier connection
    /// is dropped.
    void connectToServer(const QString &server, int port, const QString &nick, const QString &user,
                         const QString &realname);

    /// The name by which the server welcomed us; empty before that and after the end of the connection.
    QString serverName() const { return m_serverName; }
    /// Whether the server has welcomed us (001).
    bool isRegistered() const { return registered; }

    /// Does what a line typed with a leading "/" says, in the tab named `target`; see usercommands.
    void userCommand(const QString &text, const QString &target);
    void sendPrivmsg(const QString &target, const QString &text);
    /// Sends a CTCP request, framed in U+0001 (CTCP draft, 2).
    void sendCtcp(const QString &target, const QString &text);
    /// Answers a CTCP request by NOTICE, so that two clients cannot keep each other busy.
    void sendCtcpReply(const QString &target, const QString &text);

    /// Writes one line, whatever is in it: line ends and U+0000, which a stranger or the clipboard may have put there, are
    /// left out. Whether we are connected is not checked.
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
    /// Every line as it came, before it is parsed. Diagnostic: nothing listens here.
    void gotRawLine(const QString &line);
    void disconnected();
    /// Diagnostic texts: nothing listens here.
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
    /// A text for the user.
    void errormsg(const QString &text);
    void ctcp(ircmessage *msg);
    void ctcpnotice(ircmessage *msg);
    /// Why the connection is being ended on our side.
    void dropped(const QString &why);

private:
    struct reply;
    static const reply replies[];

    void dropLongLine();
    /// Ends the connection from our side, and says `why`.
    void giveUp(const QString &why);
    /// Whether the server has closed the connection, and this is not told yet: there are lines of it to read.
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
    /// How far this connection is; the flags above may still be those of the one before.
    registration progress;
    /// Goes on reading what one turn of the event loop has left.
    QTimer nextTurn;
};
