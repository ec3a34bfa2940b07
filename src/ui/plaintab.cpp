// SPDX-License-Identifier: MIT
#include "plaintab.h"

#include "ircview.h"

plaintab::plaintab(tabwindow *window, const QString &tabName) : irctab(window, tabName)
{
    addView(page);
    addInput([tabName] { return QStringList{tabName}; });
    Q_EMIT amTopTab(this);
}

void plaintab::showModes(ircmode *m)
{
    view->modes(m);
}
