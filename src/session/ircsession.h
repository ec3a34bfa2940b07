// SPDX-License-Identifier: MIT
#pragma once

#include "connection.h"
#include "event.h"
#include "usercommands.h"

#include <QElapsedTimer>
#include <QObject>

#include <memory>
#include <vector>

class channeltab;
class ircchannel;
class irctab;
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

    /// Runs the connect dialog and connects to what the user chose; returns when the dialog has closed.
    void showConnectDialog();

    plaintab *newPlainTab(const QString &name, usercommands::place where = usercommands::place::query);
    /// Always opens a new tab with a new roster, even if there is a tab of that name.
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
    /// Whether a CTCP request may be answered now. The rate is limited, so that nobody can make us flood
    /// others.
    bool mayAnswer();
    /// Calls `visit` with the open tab of each roster that contains `nick`. Two rosters with the same tab are
    /// two calls.
    template <typename Visit>
    void forTabsWith(const QString &nick, Visit visit);

    tabwindow *mainWindow;
    connection conn;
    /// In the order of their creation; the server tab is first.
    std::vector<std::unique_ptr<irctab>> tabs;
    plaintab *serverTab;
    /// The tab that the user last brought to the front; never a deleted one.
    irctab *topTab;
    irctab *closingTab = nullptr;
    QElapsedTimer clock;
    /// The times of the last answers, by `clock`.
    QList<qint64> answered;
    /// One for every channel tab ever opened. A roster is kept after its tab has closed.
    std::vector<std::unique_ptr<ircchannel>> rosters;
};
