// SPDX-License-Identifier: MIT
#include "fingerscroll.h"

#include <QAbstractScrollArea>
#include <QMouseEvent>
#include <QPointingDevice>
#include <QScrollBar>
#include <QScrollPrepareEvent>
#include <QScroller>

fingerscroll::fingerscroll(QAbstractScrollArea *area) : view(area)
{
    QScroller::grabGesture(view->viewport(), QScroller::TouchGesture);
    QScrollerProperties kinetic;
    kinetic.setScrollMetric(QScrollerProperties::VerticalOvershootPolicy,
                            QScrollerProperties::OvershootAlwaysOff);
    QScroller::scroller(view->viewport())->setScrollerProperties(kinetic);
}

bool fingerscroll::isFinger(const QMouseEvent &event)
{
    return event.pointingDevice()->type() == QInputDevice::DeviceType::TouchScreen;
}

bool fingerscroll::scroll(QEvent *event, qreal step) const
{
    QScrollBar *bar = view->verticalScrollBar();
    if (event->type() == QEvent::ScrollPrepare) {
        auto *prepare = static_cast<QScrollPrepareEvent *>(event);
        prepare->setViewportSize(view->viewport()->size());
        prepare->setContentPosRange({0, 0, 0, bar->maximum() * step});
        prepare->setContentPos({0, bar->value() * step});
        prepare->accept();
        return true;
    }
    if (event->type() == QEvent::Scroll) {
        bar->setValue(qRound(static_cast<QScrollEvent *>(event)->contentPos().y() / step));
        return true;
    }
    return false;
}
