// SPDX-License-Identifier: MIT
#include "tabmenu.h"

#include "fingers.h"
#include "fingerstyle.h"

#include <QContextMenuEvent>
#include <QGestureEvent>
#include <QMenu>

tabmenu::tabmenu(QWidget *tabs) : QObject(tabs), bar(tabs)
{
    bar->grabGesture(Qt::TapAndHoldGesture);
    bar->installEventFilter(this);
}

bool tabmenu::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ContextMenu) {
        open(static_cast<QContextMenuEvent *>(event)->globalPos());
        return true;
    }
    holds = mayHold(*event, holds);
    if (event->type() == QEvent::Gesture) {
        const QGesture *hold = static_cast<QGestureEvent *>(event)->gesture(Qt::TapAndHoldGesture);
        if (hold != nullptr && holds && hold->state() == Qt::GestureFinished)
            open(hold->hotSpot().toPoint());
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void tabmenu::open(const QPoint &where)
{
    auto *menu = new QMenu(bar);
    fingerstyle::apply(menu);
    menu->setAccessibleName(tr("Menu of Parlo"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("&Settings…"), this, &tabmenu::settingsWanted);
    menu->popup(where);
}
