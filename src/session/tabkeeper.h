// SPDX-License-Identifier: MIT
#pragma once

#include "irctab.h"

#include <QObject>

#include <functional>
#include <memory>
#include <vector>

class channeltab;
class ircchannel;
class ircmode;
class plaintab;
class tabwindow;

/// Opens, finds and closes the tabs of a session, and keeps a roster for each channel.
class tabkeeper : public QObject
{
    Q_OBJECT

public:
    /// Opens the tab "Server" in `window`. The window, the rules of the server, the manners of the session and our own nick
    /// must outlive this; all but the window are read only when somebody uses a tab.
    tabkeeper(tabwindow *window, const isupport &rules, const manners &manner, const ircuser &we);
    /// Closes all tabs, without a signal.
    ~tabkeeper() override;

    plaintab *newPlainTab(const QString &name, usercommands::place where = usercommands::place::query,
                          irctab::opening how = irctab::opening::front);
    /// Always opens a new tab with a new roster, whether or not there is one of that name.
    channeltab *newChannelTab(const QString &name);
    /// The oldest tab of this name, as the server compares names, or null.
    irctab *findTab(const QString &name) const;
    /// The same, if it is the tab of a channel: a private conversation can have the name of a channel, and must not get what
    /// happens there.
    channeltab *findChannelTab(const QString &name) const;
    /// The tab that is seen, whoever brought it to the front.
    irctab *frontTab() const;
    /// Brings the tab of this name to the front, or opens one for talk with that nick.
    void openQuery(const QString &nick);
    /// All tabs, also later ones, say in their empty input line why nothing can be said now. An empty `text` says
    /// nothing.
    void setState(const QString &text);
    /// Closes `tab` when control is back in the event loop. Only one close can be pending: a second one
    /// replaces the first. Null closes nothing.
    void closeTab(irctab *tab);

    /// Calls `visit` with the open tab of each roster that holds `nick` when its turn comes.
    void forTabsWith(const QString &nick, const std::function<void(channeltab *)> &visit) const;

    /// In the order of their creation; the server tab is first.
    std::vector<std::unique_ptr<irctab>> tabs;
    plaintab *serverTab;
    /// The tab that the user last brought to the front; never a deleted one.
    irctab *topTab;
    /// One for every channel tab ever opened: a roster outlives its tab.
    std::vector<std::unique_ptr<ircchannel>> rosters;

public Q_SLOTS:
    void newTopTab(irctab *tab);
    void removeTab();

Q_SIGNALS:
    /// A tab other than "Server" has opened. `channel` is null where it is not the tab of a channel.
    void opened(irctab *tab, channeltab *channel);
    /// A tab of this name was closed.
    void closed(const QString &name);

private:
    template <typename Tab>
    Tab *adopt(std::unique_ptr<Tab> tab);

    tabwindow *mainWindow;
    const isupport &rules;
    const manners &manner;
    const ircuser &we;
    irctab *closingTab = nullptr;
    QString state = tr("Not connected");
};
