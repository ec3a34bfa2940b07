// SPDX-License-Identifier: MIT
#include "plaintab.h"

#include "ircview.h"

plaintab::plaintab(tabwindow *window, const QString &tabName, usercommands::place where, opening how)
    : irctab(window, tabName, how)
{
    addView(page);
    addInput(where, [where, tabName] {
        return where == usercommands::place::query ? QStringList{tabName} : QStringList();
    });
    Q_EMIT amTopTab(this);
}

void plaintab::showModes(ircmode *m)
{
    view->modes(m);
}
