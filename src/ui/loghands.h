// SPDX-License-Identifier: MIT
#pragma once

#include "fingerscroll.h"
#include "linkclick.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>

class QGestureEvent;
class QMouseEvent;
class logview;

/// What mouse and fingers do in a log.
///
/// Dragging selects and copies, beyond an edge with scrolling; a second click selects words and a third one lines,
/// and Shift extends. A click on a web address opens it. A finger scrolls, and taps. Where web addresses look like links,
/// a long press on one opens its menu.
class loghands : public QObject
{
    Q_OBJECT

public:
    /// Filters the events of the viewport of `log`, its parent.
    explicit loghands(logview *log);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    bool press(const QMouseEvent &event);
    bool doubleClick(const QMouseEvent &event);
    bool move(const QMouseEvent &event);
    bool release(const QMouseEvent &event);
    bool hold(QGestureEvent &event);
    bool showMenu(const QPoint &point);

    logview *view;
    linkclick links;
    fingerscroll fingers;
    QElapsedTimer sinceDoubleClick;
    QPoint doubleClicked;
    QPoint pointer;
    bool finger = false;
    /// Scrolls while the pointer is beyond an edge.
    QBasicTimer edge;
};
