// SPDX-License-Identifier: MIT
#include "ui/plaintab.h"

#include "ui/ircview.h"

plaintab::plaintab(parlo *window, const QString &tabName) : irctab(window, tabName)
{
    addView(page);
    addInput([tabName] { return QStringList{tabName}; });
    Q_EMIT amTopTab(this);
}

void plaintab::showModes(ircmode *m)
{
    view->modes(m);
}
