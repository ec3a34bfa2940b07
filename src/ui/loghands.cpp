// SPDX-License-Identifier: MIT
#include "loghands.h"

#include "fingerstyle.h"
#include "logview.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QGestureEvent>
#include <QMenu>
#include <QMouseEvent>

#include <algorithm>

using unit = logselection::unit;

namespace {

constexpr int edgeMs = 40;

} // namespace

loghands::loghands(logview *log)
    : QObject(log),
      view(log),
      links([log](const QPoint &point) { return log->addressAt(point); }),
      fingers(log)
{
    view->viewport()->setMouseTracking(true);
    view->viewport()->grabGesture(Qt::TapAndHoldGesture);
    view->viewport()->installEventFilter(this);
}

bool loghands::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return press(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseButtonDblClick:
        return doubleClick(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseMove:
        return move(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseButtonRelease:
        return release(*static_cast<QMouseEvent *>(event));
    case QEvent::ContextMenu:
        return showMenu(static_cast<QContextMenuEvent *>(event)->pos());
    case QEvent::Gesture:
        return hold(*static_cast<QGestureEvent *>(event));
    case QEvent::Wheel:
        // With Ctrl it changes the size of the text elsewhere, which is the same in all views here.
        if (!static_cast<QWheelEvent *>(event)->modifiers().testFlag(Qt::ControlModifier))
            break;
        event->ignore();
        return true;
    default:
        break;
    }
    return fingers.scroll(event) || QObject::eventFilter(watched, event);
}

bool loghands::press(const QMouseEvent &event)
{
    if (event.button() != Qt::LeftButton)
        return false;
    pointer = event.position().toPoint();
    links.press(pointer);
    finger = fingerscroll::isFinger(event);
    if (finger)
        return true;
    // Nothing is ever dragged from here. That runs an event loop of its own, in which the server may close this
    // tab; and what is selected has been copied.
    const bool third = sinceDoubleClick.isValid() &&
                       sinceDoubleClick.elapsed() < QApplication::doubleClickInterval() &&
                       (pointer - doubleClicked).manhattanLength() < QApplication::startDragDistance();
    if (event.modifiers() == Qt::ShiftModifier)
        view->extendSelection(view->placeAt(pointer));
    else
        view->beginSelection(view->placeAt(pointer), third ? unit::line : unit::character);
    return true;
}

bool loghands::doubleClick(const QMouseEvent &event)
{
    if (event.button() != Qt::LeftButton)
        return false;
    if (fingerscroll::isFinger(event))
        return true;
    sinceDoubleClick.start();
    doubleClicked = event.position().toPoint();
    view->beginSelection(view->placeAt(doubleClicked), unit::word);
    return true;
}

bool loghands::move(const QMouseEvent &event)
{
    if (fingerscroll::isFinger(event))
        return true;
    pointer = event.position().toPoint();
    const bool selects = event.buttons().testFlag(Qt::LeftButton);
    view->viewport()->setCursor(selects ? Qt::IBeamCursor : links.cursorAt(pointer));
    if (selects)
        view->extendSelection(view->placeAt(pointer));
    if (!selects || view->viewport()->rect().contains(pointer))
        edge.stop();
    else if (!edge.isActive())
        edge.start(edgeMs, this);
    return true;
}

void loghands::timerEvent(QTimerEvent * /*event*/)
{
    const int below = std::max(0, pointer.y() - view->viewport()->height());
    view->scrollBy(pointer.y() < 0 ? pointer.y() : below);
    view->extendSelection(view->placeAt(pointer));
}

bool loghands::release(const QMouseEvent &event)
{
    if (event.button() != Qt::LeftButton)
        return false;
    edge.stop();
    if (!view->selection().isEmpty() && !fingerscroll::isFinger(event))
        view->copy();
    else
        links.release(event.position().toPoint());
    return true;
}

bool loghands::hold(QGestureEvent &event)
{
    const QGesture *held = event.gesture(Qt::TapAndHoldGesture);
    if (held == nullptr || held->state() != Qt::GestureFinished || !finger || !view->showsLinks())
        return false;
    const QPoint point = view->viewport()->mapFromGlobal(held->hotSpot().toPoint());
    if (!view->addressAt(point).isValid())
        return false;
    links.cancel();
    return showMenu(point);
}

// No menu may run an event loop of its own, in which the server may close this tab.
bool loghands::showMenu(const QPoint &point)
{
    auto *menu = new QMenu(view);
    fingerstyle::apply(menu);
    menu->setAccessibleName(tr("Menu of the text"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const QUrl address = view->addressAt(point);
    // With spaces and the like as they are, it would end there when it is pasted.
    const auto copyAddress = [text = address.toString(QUrl::FullyEncoded)] {
        QApplication::clipboard()->setText(text);
    };
    if (address.isValid() && view->showsLinks()) {
        menu->addAction(tr("&Open"), view, [address] { QDesktopServices::openUrl(address); });
        menu->addAction(tr("Copy &address"), view, copyAddress);
        menu->addSeparator();
    }
    menu->addAction(tr("&Copy"), view, &logview::copy)->setEnabled(!view->selection().isEmpty());
    if (address.isValid() && !view->showsLinks())
        menu->addAction(tr("Copy &Link"), view, copyAddress);
    menu->addAction(tr("Select &All"), view, &logview::selectAll);
    menu->popup(view->viewport()->mapToGlobal(point));
    return true;
}
