// SPDX-License-Identifier: MIT
#include "attention.h"

#include "event.h"
#include "formatting.h"
#include "irctab.h"
#include "tabbar.h"
#include "tabkeeper.h"
#include "tabwindow.h"

#include <QApplication>
#include <QWindow>

namespace {

QString withoutCodes(const QString &said)
{
    QString plain;
    for (const textrun &run : formatted(said))
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
    const QString nick = unformatted(what.who.nick());
    const QString where = tab->shownName();
    desktop.notify(tab->tabName(), nick == where ? nick : tr("%1 in %2").arg(nick, where),
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
    window->show();
    window->raise();
    window->activateWindow();
}
