// SPDX-License-Identifier: MIT
#pragma once

#include "addresslink.h"
#include "ircuser.h"
#include "isupport.h"
#include "linkkeeper.h"
#include "linkstate.h"
#include "manners.h"
#include "outbox.h"
#include "socket.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

class ircmessage;
class ircmode;

/// The link to the one IRC server (RFC 1459).
///
/// A plain host name makes it speak classic IRC. An address (see ircaddress) makes it speak today's: `manner` says what
/// differs, `keeper` tries and waits, and addresslink does what a line asks for besides.
///
/// It registers, answers PING, turns every line of the server into one typed signal, and writes what we send. The records
/// in the signals live until the emit returns: receivers copy what they keep. A line is handled completely before the
/// next is read.
class connection : public QObject
{
    Q_OBJECT

public:
    connection();

    /// Registers as `nick` with `server`, a host name or an address; `port` 0 is the usual one, an empty user or real name
    /// takes the default. Reports an empty nick or server through errormsg(), what is no address through noAddress(), and
    /// does nothing else then. An earlier connection is dropped.
    void connectToServer(const QString &server, int port, const QString &nick, const QString &user,
                         const QString &realname);

    /// The server's name for itself in its welcome (001); empty before that and after the end of the
    /// connection.
    QString serverName() const { return link.serverName; }
    /// The host that we want to be connected to; empty before the first connectToServer().
    QString host() const { return manner.negotiates ? keeper.where().address.host() : server; }
    /// The nick that the user wants: in a session by address, the server may have given us another one.
    QString wantedNick() const { return manner.negotiates ? byAddress.nick.wanted() : identity.nick(); }
    /// Whether the server has welcomed us (001).
    bool isRegistered() const { return link.registered; }

    /// Does what a line typed with a leading "/" says, in the tab named `target`; see usercommands. False if it needs a
    /// connection and there is none.
    bool userCommand(const QString &text, const QString &target);
    /// Says `text` to `target`, as an action (CTCP draft) or not, in as many lines as it takes; said() tells what goes out.
    /// False if it would take too many.
    bool say(const QString &target, const QString &text, bool action);
    /// The number of lines that say() would send for `text`; 0 if it would refuse that many.
    qsizetype piecesOf(const QString &target, const QString &text, bool action) const;
    /// Says each of these texts, at a pace that servers bear. False, and nothing is said, if one of them would take too many.
    bool say(const QString &target, const QStringList &texts);
    /// Joins "#a,#b keya,keyb", and remembers the keys for the next connection (sessions by address).
    void joinWithKeys(const QString &channelsAndKeys);
    void sendPrivmsg(const QString &target, const QString &text);
    /// Sends a CTCP request, between two U+0001 (CTCP draft, 2).
    void sendCtcp(const QString &target, const QString &text);
    /// Answers a CTCP request by NOTICE, which nobody answers, so two clients cannot go on without end.
    void sendCtcpReply(const QString &target, const QString &text);

    /// Sends a line of the user's: write(), and tooLong() if that is the reason why nothing is written.
    bool send(const QString &line);
    /// Writes one line, whatever is in it: line ends and U+0000, which a stranger or the clipboard may have put there, are
    /// left out. A classic session does not check whether we are connected, nor how long the line is; one by address writes
    /// nothing then. False if nothing was written.
    bool write(QString line);
    /// Ends the connection in silence towards the server.
    void dropLink();

    /// Whether `nick` is ours.
    bool isMe(const QString &nick) const
    {
        return manner.readsRules ? supports.same(nick, identity.nick()) : nick == identity.nick();
    }
    /// Whether `name` is a channel.
    bool isChannel(const QString &name) const { return supports.isChannel(name); }

    /// Whether the server can be written to, welcome or not.
    bool isConnected() const { return socket.state() == QAbstractSocket::ConnectedState; }
    /// Whether what is said now would reach the server. A classic session does not know.
    bool isReady() const { return !manner.mindsSending || (link.registered && isConnected()); }

    /// How this session behaves.
    manners manner;
    /// In a session by address: `channel` is ours from now on, or no more, on later connections as well.
    void remember(const QString &channel, bool in);

    /// The rules of the server; after its end, until the next one is reached.
    isupport supports;
    linkkeeper keeper;
    /// For the next connectToServer(): what it needs besides if it goes to an address. The port is that of the preset.
    destination details;
    /// The local user: nick, user name and real name; the host is not used.
    ircuser identity;
    /// What is joined on a new connection.
    QStringList channels;
    class socket socket;
    /// Whether the registration lines have been sent.
    bool loggedIn = false;
    /// The link that stands, or is being made.
    linkstate link;

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
    /// The address that the user named is none: why, for the user.
    void noAddress(const QString &why);
    void ctcp(ircmessage *msg);
    void ctcpnotice(ircmessage *msg);
    /// The reason why we end the connection.
    void dropped(const QString &why);
    /// How the connection is while nothing can be said, for the user; empty as soon as something can.
    void state(const QString &text);
    /// What Parlo itself has to say about the connection of a session by address.
    void status(const QString &text);
    /// The user wants to connect to an address whose account needs a password.
    void passwordWanted(const QString &address, int port);
    /// This went out.
    void said(const QString &target, const QString &text, bool action);
    /// A line of the user's did not go out: it is longer than the server takes.
    void tooLong();
    /// This could not go out any more.
    void notSaid(const QString &target, const QString &text, bool action);
    /// A line to be done as if it were typed in the tab of the server.
    void perform(const QString &line);
    /// The members of a channel were listed because the user has asked for them.
    void namesListed(const QString &channel);
    /// Many people have left or come at once, since servers have parted or met.
    void split(const netbatch &people);

private:
    struct reply;
    static const reply replies[];

    void useManners(const manners &wanted);
    /// The connection has ended: nothing of it holds any more.
    void endLink();
    /// In a classic session: the server cannot be reached.
    void tellFailure(QAbstractSocket::SocketError error);
    void dropLongLine();
    /// Ends the connection from our side, and emits dropped().
    void giveUp(const QString &why);
    /// Whether the server has closed the connection, but disconnected() is pending until its lines are read.
    bool isEnding() const;
    /// Whether the server takes a line of this length.
    bool fits(const QString &line) const;
    void parseLine(const QString &line);
    void handleWelcome(ircmessage *msg);
    void handlePing(ircmessage *msg);
    void handlePrivmsg(ircmessage *msg);
    void handleNotice(ircmessage *msg);
    void handleNames(ircmessage *msg);
    void handleEndOfNames(ircmessage *msg);
    void handleMode(ircmessage *msg);
    void handleNick(ircmessage *msg);

    /// In bytes, what a message to `target` can hold.
    qsizetype roomFor(const QString &target) const;

    QString server;
    quint16 port = 0;
    /// What is said and not yet sent.
    outbox pending;
    addresslink byAddress{*this};
    /// Continues reading in the next turn of the event loop.
    QTimer nextTurn;
};
