// SPDX-License-Identifier: MIT
#include "attention.h"

#include "event.h"
#include "formatting.h"
#include "irctab.h"
#include "isupport.h"
#include "tabbar.h"
#include "tabkeeper.h"
#include "tabwindow.h"

#include <QApplication>
#include <QWindow>

namespace {

/// A notification shows less, but some characters are only codes.
constexpr qsizetype maxRead = 2048;

QString withoutCodes(const QString &said)
{
    QString plain;
    for (const textrun &run : formatted(said.left(maxRead)))
        plain += run.text;
    return plain;
}

} // namespace

attention::attention(tabwindow *mainWindow, tabkeeper &keeper) : window(mainWindow), tabs(keeper)
{
    connect(&desktop, &notifier::activated, this, &attention::bringToFront);
    connect(qApp, &QGuiApplication::focusWindowChanged, this, [this] { seen(tabs.frontTab()); });
}

void attention::happened(const struct event &what, irctab *tab)
{
    if (!what.forUs || !what.isTalk() || what.old || (window->isActiveWindow() && tab->isInFront()))
        return;
    QApplication::alert(window);
    if (!window->prefs().notifies)
        return;
    const QString nick = unformatted(what.who.nick().left(maxRead));
    const bool isTheirs = tab->rules->same(what.who.nick(), tab->tabName());
    desktop.notify(tab->tabName(), isTheirs ? nick : tr("%1 in %2").arg(nick, tab->shownName()),
                   withoutCodes(what.text));
}

void attention::seen(const irctab *tab)
{
    if (window->isActiveWindow() && tab->isInFront())
        desktop.withdraw(tab->tabName());
}

void attention::bringToFront(const QString &tabName)
{
    if (const irctab *tab = tabs.findTab(tabName))
        window->tabBar->setCurrentTab(tab->tabId);
    // Not every window manager shows a minimized window that wants to be the active one.
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    window->activateWindow();
}
