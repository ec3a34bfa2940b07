// SPDX-License-Identifier: MIT
#pragma once

#include "attention.h"
#include "connection.h"
#include "ctcpanswers.h"
#include "eventmaker.h"
#include "ignorelist.h"
#include "linkstore.h"
#include "logbook.h"
#include "membermenu.h"
#include "tabkeeper.h"
#include "typing.h"

#include <QElapsedTimer>
#include <QObject>

/// Connects the tabs with the server: passes each event of the server to the tab that it concerns, opens and closes tabs for
/// that, and passes what the user types to the server.
class ircsession : public QObject
{
    Q_OBJECT

public:
    /// Opens the tab "Server" in `window`, which must outlive the session. Connects to nothing yet.
    explicit ircsession(tabwindow *window);
    /// Keeps the session by address that is connected now in the settings file, if the user wants that.
    ~ircsession() override;

    /// Runs the connect dialog and connects as it says; returns when the dialog has closed. Where `address` names one, the
    /// dialog proposes it.
    void showConnectDialog(const QString &address = {});

public Q_SLOTS:
    void userInput(const QString &text, irctab *tab);
    void socketDisconnect();
    void errormsg(const QString &text);
    void parsePrivmsg(ircmessage *msg);
    void parseNotice(ircmessage *msg);
    void parseMessage(ircmessage *msg);
    void parseAction(ircmessage *msg);
    void parseJoin(ircmessage *msg);
    void parsePart(ircmessage *msg);
    void parseQuit(ircmessage *msg);
    void parseKick(ircmessage *msg);
    void parseNick(ircmessage *msg);
    void parseCtcp(ircmessage *msg);
    void parseMode(ircmode *m);
    void rpl_namreply(const QString &channel, QStringList *names);
    void rpl_endofnames(const QString &channel);

private:
    /// The user has asked for this in the menu of a member.
    void memberAsked(memberaction what, const QString &nick, channeltab *tab);
    /// `tab` shows `talk` next: marks the tab, and tells the user if it is for them and they do not see it.
    void announce(irctab *tab, const struct event &talk);
    /// Connects a new tab; `channel` is the same if it is that of a channel.
    void wireTab(irctab *tab, channeltab *channel);
    /// The tab for a PRIVMSG or an ACTION: the sender's query tab or the target's tab. Opens it if there is
    /// none.
    irctab *tabForMessage(const ircmessage *msg);
    void modesChanged(ircmode *m) const;
    /// We are in this channel now, under this name.
    void openJoined(const QString &name, ircuser *us);
    // What sessions by address have besides.
    void showStatus(const QString &text);
    /// Asks for the password of the account in an address, and connects.
    void askAndConnect(const QString &address, int port);
    void showReply(const ircmessage &msg);
    void parseSplit(const netbatch &people);

    tabwindow *mainWindow;
    linkstore links;
    connection conn;
    tabkeeper tabs;
    ignorelist ignored;
    eventmaker events;
    logbook logs;
    attention calls;
    typing typed;
    QElapsedTimer clock;
    ctcpanswers answers;
};
