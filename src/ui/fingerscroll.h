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

    /// Scrolls, if that is what `event` wants; then it needs nothing more. The scroll bar counts pixels.
    bool scroll(QEvent *event);

private:
    QAbstractScrollArea *view;
    /// Where the finger has scrolled to. The bar may stand elsewhere once the view knows its heights better.
    int reached = 0;
};
