// SPDX-License-Identifier: MIT
#pragma once

#include "ircuser.h"
#include "socket.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

class QTextStream;
class ircmessage;
class ircmode;

/// The link to the one IRC server (RFC 1459).
///
/// It registers, answers PING, turns every line of the server into one typed signal, and slash commands into
/// lines. The records in the signals live until the emit returns: receivers copy what they keep. A line is
/// handled completely before the next is read.
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

    /// Does what a line typed with a leading "/" says, in the tab named `target`; writes one line at most.
    void userCommand(const QString &text, const QString &target);
    void sendPrivmsg(const QString &target, const QString &text);
    /// Sends a CTCP request, framed in U+0001 (CTCP draft, 2).
    void sendCtcp(const QString &target, const QString &text);
    /// Answers a CTCP request by NOTICE, so that two clients cannot keep each other busy.
    void sendCtcpReply(const QString &target, const QString &text);

    /// The words of the commands that userCommand() knows, in capitals.
    static QStringList commandWords();
    /// Whether `name` is a channel's (RFC 1459, 1.3).
    static bool isChannel(const QString &name);

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
    struct command;
    static const reply replies[];
    static const command commands[];

    void dropLongLine();
    /// Ends the connection from our side, and says `why`.
    void giveUp(const QString &why);
    /// Writes one line, whatever is in it: a line end or a U+0000 of a stranger's or the clipboard's is left
    /// out.
    void send(QString line);
    void parseLine(const QString &line);
    void handleWelcome(ircmessage *msg);
    void handlePing(ircmessage *msg);
    void handlePrivmsg(ircmessage *msg);
    void handleNotice(ircmessage *msg);
    void handleNames(ircmessage *msg);
    void handleEndOfNames(ircmessage *msg);
    void handleMode(ircmessage *msg);
    void handleNick(ircmessage *msg);

    void serverCommand(QTextStream &args, const QString &target);
    void quitCommand(QTextStream &args, const QString &target);
    void quoteCommand(QTextStream &args, const QString &target);
    void msgCommand(QTextStream &args, const QString &target);
    void joinCommand(QTextStream &args, const QString &target);
    void partCommand(QTextStream &args, const QString &target);
    void modeCommand(QTextStream &args, const QString &target);
    void nickCommand(QTextStream &args, const QString &target);
    void kickCommand(QTextStream &args, const QString &target);
    void ctcpCommand(QTextStream &args, const QString &target);
    void meCommand(QTextStream &args, const QString &target);

    QString server;
    QString m_serverName;
    bool registered = false;
    /// Whether this connection has had its 001; `registered` may still be that of the one before.
    bool welcomed = false;
    /// The server has closed the connection, and there are lines of it to read yet.
    bool ended = false;
    /// Goes on reading what one turn of the event loop has left.
    QTimer nextTurn;
};
