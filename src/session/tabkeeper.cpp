// SPDX-License-Identifier: MIT
#include "tabkeeper.h"

#include "channeltab.h"
#include "ircchannel.h"
#include "isupport.h"
#include "plaintab.h"
#include "tabbar.h"
#include "tabwindow.h"

#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// After this time the signal that asked for the close has returned.
constexpr int closeDelayMs = 1;

} // namespace

tabkeeper::tabkeeper(tabwindow *window, const isupport &serverRules, const manners &sessionManner,
                     const ircuser &ourselves)
    : mainWindow(window), rules(serverRules), manner(sessionManner), we(ourselves)
{
    serverTab = newPlainTab(u"Server"_s, usercommands::place::server);
    topTab = serverTab;
}

// When a tab is deleted, another one comes to the front and says so.
tabkeeper::~tabkeeper()
{
    for (const auto &tab : tabs)
        tab->disconnect();
}

template <typename Tab>
Tab *tabkeeper::adopt(std::unique_ptr<Tab> tab)
{
    Tab *added = tab.get();
    tabs.push_back(std::move(tab));
    added->follow(rules, manner, we);
    added->setState(state);
    connect(added, &irctab::amTopTab, this, &tabkeeper::newTopTab);
    return added;
}

plaintab *tabkeeper::newPlainTab(const QString &name, usercommands::place where, irctab::opening how)
{
    plaintab *tab = adopt(std::make_unique<plaintab>(mainWindow, name, where, how));
    Q_EMIT opened(tab, nullptr);
    return tab;
}

channeltab *tabkeeper::newChannelTab(const QString &name)
{
    ircchannel *roster = rosters.emplace_back(std::make_unique<ircchannel>(name, rules)).get();
    channeltab *tab = adopt(std::make_unique<channeltab>(mainWindow, roster, name));
    Q_EMIT opened(tab, tab);
    return tab;
}

irctab *tabkeeper::findTab(const QString &name) const
{
    const auto found = std::find_if(tabs.begin(), tabs.end(),
                                    [&](const auto &tab) { return rules.same(tab->tabName(), name); });
    return found == tabs.end() ? nullptr : found->get();
}

channeltab *tabkeeper::findChannelTab(const QString &name) const
{
    return qobject_cast<channeltab *>(findTab(name));
}

irctab *tabkeeper::frontTab() const
{
    const auto found =
        std::find_if(tabs.begin(), tabs.end(), [](const auto &tab) { return tab->isInFront(); });
    return found == tabs.end() ? serverTab : found->get();
}

void tabkeeper::openQuery(const QString &nick)
{
    if (const irctab *tab = findTab(nick))
        mainWindow->tabBar->setCurrentTab(tab->tabId);
    else
        newTopTab(newPlainTab(nick));
}

void tabkeeper::setState(const QString &text)
{
    state = text;
    for (const auto &tab : tabs)
        tab->setState(text);
}

void tabkeeper::closeTab(irctab *tab)
{
    closingTab = tab;
    QTimer::singleShot(closeDelayMs, this, &tabkeeper::removeTab);
}

void tabkeeper::removeTab()
{
    const auto found =
        std::find_if(tabs.begin(), tabs.end(), [this](const auto &tab) { return tab.get() == closingTab; });
    closingTab = nullptr;
    if (found == tabs.end())
        return;
    const std::unique_ptr<irctab> gone = std::move(*found);
    Q_EMIT closed(gone->tabName());
    tabs.erase(found);
    if (topTab == gone.get())
        topTab = serverTab;
}

void tabkeeper::newTopTab(irctab *tab)
{
    topTab = tab;
}

void tabkeeper::forTabsWith(const QString &nick, const std::function<void(channeltab *)> &visit) const
{
    for (const auto &roster : rosters) {
        if (roster->findUser(nick) == nullptr)
            continue;
        if (channeltab *tab = findChannelTab(roster->channelName()))
            visit(tab);
    }
}
