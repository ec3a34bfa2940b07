// SPDX-License-Identifier: MIT
#include "ircuserbox.h"

#include "ircchannel.h"
#include "isupport.h"
#include "memberrow.h"
#include "rostermodel.h"

#include <QGestureEvent>
#include <QKeyEvent>
#include <QScroller>

#include <algorithm>
#include <utility>

ircuserbox::ircuserbox(QWidget *parent) : QListView(parent), rows(new rostermodel(this))
{
    setModel(rows);
    setItemDelegate(new memberrow(this));
    // A click selects a member, but the focus stays in the input line.
    setFocusPolicy(Qt::TabFocus);
    setUniformItemSizes(true);
    setVerticalScrollMode(ScrollPerPixel);
    viewport()->grabGesture(Qt::TapAndHoldGesture);
    QScroller::grabGesture(viewport(), QScroller::TouchGesture);
}

void ircuserbox::keyPressEvent(QKeyEvent *event)
{
    const bool chosen = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (chosen && currentIndex().isValid())
        Q_EMIT doubleClicked(currentIndex());
    else
        QListView::keyPressEvent(event);
}

bool ircuserbox::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::Gesture) {
        const QGesture *hold = static_cast<QGestureEvent *>(event)->gesture(Qt::TapAndHoldGesture);
        if (hold != nullptr && hold->state() == Qt::GestureFinished) {
            const QModelIndex held = indexAt(viewport()->mapFromGlobal(hold->hotSpot().toPoint()));
            if (held.isValid())
                Q_EMIT doubleClicked(held);
            return true;
        }
    }
    return QListView::viewportEvent(event);
}

void ircuserbox::fill(const ircchannel *channel)
{
    if (pending == nullptr)
        QMetaObject::invokeMethod(this, &ircuserbox::takePending, Qt::QueuedConnection);
    pending = channel;
}

void ircuserbox::takePending()
{
    if (pending == nullptr)
        return;
    const ircchannel &channel = *std::exchange(pending, nullptr);
    const QString current = currentIndex().data(rostermodel::NickRole).toString();
    const int before = currentIndex().row();
    rows->setMembers(*channel.roster());
    if (before < 0)
        return;
    const qsizetype now = channel.roster()->find(current, channel.rules().caseOfNames());
    // The list must not scroll while the user reads another part of it.
    setAutoScroll(false);
    setCurrentIndex(rows->index(now < 0 ? std::min(before, rows->rowCount() - 1) : static_cast<int>(now)));
    setAutoScroll(true);
}
