// SPDX-License-Identifier: MIT
#pragma once

#include "connection.h"
#include "ctcpanswers.h"
#include "event.h"
#include "irctab.h"
#include "linkstore.h"
#include "usercommands.h"

#include <QElapsedTimer>
#include <QObject>

#include <memory>
#include <vector>

class channeltab;
class ircchannel;
class tabwindow;
class plaintab;

/// Connects the tabs with the server: opens and closes tabs, passes each event of the server to the tab that
/// it concerns, and passes what the user types to the server.
class ircsession : public QObject
{
    Q_OBJECT

public:
    /// Opens the tab "Server" in `window`, which must outlive the session. Connects to nothing yet.
    explicit ircsession(tabwindow *window);
    ~ircsession() override;

    /// Runs the connect dialog and connects as it says; returns when the dialog has closed. Where `address` names one, the
    /// dialog proposes it.
    void showConnectDialog(const QString &address = {});

    plaintab *newPlainTab(const QString &name, usercommands::place where = usercommands::place::query,
                          irctab::opening how = irctab::opening::front);
    /// Always opens a new tab with a new roster, whether or not there is one of that name.
    channeltab *newChannelTab(const QString &name);
    /// The oldest tab of this name, ignoring case, or null.
    irctab *findTab(const QString &name) const;
    /// Closes `tab` when control is back in the event loop. Only one close can be pending: a second one
    /// replaces the first.
    void closeTab(irctab *tab);

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
    void newTopTab(irctab *tab);
    void removeTab();
    void rpl_namreply(const QString &channel, QStringList *names);
    void rpl_endofnames(const QString &channel);

private:
    template <typename Tab>
    Tab *adopt(std::unique_ptr<Tab> tab);
    bool addressedToMe(const ircmessage *msg) const;
    bool sentByMe(const ircmessage *msg) const;
    /// The tab for a PRIVMSG or an ACTION: the sender's query tab or the target's tab. Opens it if there is
    /// none.
    irctab *tabForMessage(const ircmessage *msg);
    channeltab *findChannelTab(const QString &name) const;
    /// Makes the event for what happens now, before it is shown. `msg` is the server's line, if there is one.
    static struct event newEvent(event::kind what);
    struct event newEvent(event::kind what, const ircmessage *msg, const QString &text = {}) const;
    void modesChanged(ircmode *m) const;
    /// Brings the tab of this name to the front, or opens one for talk with that nick.
    void openQuery(const QString &nick);
    // What sessions by address have besides.
    void userInputToday(const QString &text, irctab *tab);
    void sayIn(irctab *tab, const QString &said, bool action);
    void showStatus(const QString &text);
    /// Asks for the password of the account in an address, and connects.
    void askAndConnect(const QString &address, int port);
    void showSaid(const QString &target, const QString &text, bool action);
    void performLine(const QString &line);
    void showReply(const ircmessage &msg);
    /// The tab that is seen, whoever brought it to the front.
    irctab *frontTab() const;
    void parseSplit(const netbatch &people);
    /// We are in this channel now, under this name.
    void openJoined(const QString &name, ircuser *us);
    static QString notSent();
    static QString tooLong();
    /// The open tabs of all rosters that hold `nick`, each as often as rosters hold it.
    template <typename Visit>
    void forTabsWith(const QString &nick, Visit visit);

    tabwindow *mainWindow;
    linkstore links;
    connection conn;
    /// In the order of their creation; the server tab is first.
    std::vector<std::unique_ptr<irctab>> tabs;
    plaintab *serverTab;
    /// The tab that the user last brought to the front; never a deleted one.
    irctab *topTab;
    irctab *closingTab = nullptr;
    QElapsedTimer clock;
    ctcpanswers answers;
    /// One for every channel tab ever opened: a roster outlives its tab.
    std::vector<std::unique_ptr<ircchannel>> rosters;
};
