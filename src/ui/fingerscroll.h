// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

class QAbstractScrollArea;
class QEvent;
class QMouseEvent;

/// Lets a finger scroll a view up and down; the view goes on for a while when it is lifted, and stops at the
/// ends. A finger makes mouse events too, which isFinger() tells from those of a mouse.
class fingerscroll
{
public:
    /// `area` is the view. It hands the events of its viewport to scroll().
    explicit fingerscroll(QAbstractScrollArea *area);

    static bool isFinger(const QMouseEvent &event);

    /// Scrolls, if that is what `event` wants; then it needs nothing more. A finger's way is measured in
    /// pixels, of which one step of the vertical scroll bar takes `step`.
    bool scroll(QEvent *event, qreal step) const;

private:
    QAbstractScrollArea *view;
};
