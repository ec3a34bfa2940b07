// SPDX-License-Identifier: MIT
#include "ircuserbox.h"

#include "fingers.h"
#include "ircchannel.h"
#include "isupport.h"
#include "manners.h"
#include "memberrow.h"
#include "rostermodel.h"

#include <QContextMenuEvent>
#include <QGestureEvent>
#include <QKeyEvent>
#include <QScroller>

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace {

/// A finger that stays down so much longer than a long press takes opens the menu.
constexpr auto longerPress = 500ms;

QString nickAt(const QModelIndex &row)
{
    return row.data(rostermodel::NickRole).toString();
}

} // namespace

ircuserbox::ircuserbox(QWidget *parent)
    : QListView(parent), rows(new rostermodel(this)), rules(&isupport::classic()), manner(&manners::classic())
{
    setModel(rows);
    setItemDelegate(new memberrow(this));
    // A click selects a member, but the focus stays in the input line.
    setFocusPolicy(Qt::TabFocus);
    setUniformItemSizes(true);
    setVerticalScrollMode(ScrollPerPixel);
    viewport()->grabGesture(Qt::TapAndHoldGesture);
    QScroller::grabGesture(viewport(), QScroller::TouchGesture);
    connect(this, &QListView::doubleClicked, this,
            [this](const QModelIndex &row) { Q_EMIT asked(memberaction::query, nickAt(row)); });
    holding.setSingleShot(true);
    holding.setInterval(longerPress);
    connect(&holding, &QTimer::timeout, this,
            [this] { showMenu(indexOf(held), viewport()->mapToGlobal(heldAt)); });
}

void ircuserbox::follow(const isupport &serverRules, const manners &sessionManner, const ircuser &we)
{
    rules = &serverRules;
    manner = &sessionManner;
    us = &we;
    rows->follow(sessionManner);
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
    holds = mayHold(*event, holds);
    switch (event->type()) {
    case QEvent::Gesture:
        if (const QGesture *press = static_cast<QGestureEvent *>(event)->gesture(Qt::TapAndHoldGesture)) {
            if (holds && press->state() == Qt::GestureFinished)
                hold(viewport()->mapFromGlobal(press->hotSpot().toPoint()));
            return true;
        }
        break;
    case QEvent::TouchEnd:
    case QEvent::MouseButtonRelease:
        if (holding.isActive()) {
            holding.stop();
            Q_EMIT asked(memberaction::query, held);
        }
        break;
    case QEvent::TouchCancel:
    case QEvent::Scroll:
        holding.stop();
        break;
    default:
        break;
    }
    return QListView::viewportEvent(event);
}

void ircuserbox::hold(const QPoint &point)
{
    heldAt = point;
    held = nickAt(indexAt(point));
    if (!held.isEmpty())
        holding.start();
}

QModelIndex ircuserbox::indexOf(const QString &nick) const
{
    return rows->index(static_cast<int>(rows->roster().find(nick, rules->caseOfNames())));
}

void ircuserbox::contextMenuEvent(QContextMenuEvent *event)
{
    holding.stop();
    if (event->reason() == QContextMenuEvent::Keyboard)
        showMenu(currentIndex(), viewport()->mapToGlobal(visualRect(currentIndex()).center()));
    else
        showMenu(indexAt(event->pos()), event->globalPos());
}

void ircuserbox::showMenu(const QModelIndex &row, const QPoint &at)
{
    if (!row.isValid())
        return;
    const ircuserlist &roster = rows->roster();
    const ircchanneluser &member = roster.at(row.row());
    const qsizetype we = us == nullptr ? -1 : roster.find(us->nick(), rules->caseOfNames());
    auto *menu = new membermenu(member,
                                {.moreCommands = manner->moreCommands,
                                 .weAreOperator = we >= 0 && roster.at(we).isOp(),
                                 .ourselves = us != nullptr && rules->same(us->nick(), member.nick())},
                                this);
    // The member may leave, or get another nick, while the menu is open.
    connect(menu, &membermenu::chosen, this,
            [this, nick = member.nick()](memberaction what) { Q_EMIT asked(what, nick); });
    menu->popup(at);
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
    const QString current = nickAt(currentIndex());
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
