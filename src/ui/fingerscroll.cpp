// SPDX-License-Identifier: MIT
#include "fingerscroll.h"

#include <QAbstractScrollArea>
#include <QMouseEvent>
#include <QPointingDevice>
#include <QScrollBar>
#include <QScrollPrepareEvent>
#include <QScroller>

#include <utility>

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

bool fingerscroll::scroll(QEvent *event)
{
    QScrollBar *bar = view->verticalScrollBar();
    if (event->type() == QEvent::ScrollPrepare) {
        auto *prepare = static_cast<QScrollPrepareEvent *>(event);
        reached = bar->value();
        prepare->setViewportSize(view->viewport()->size());
        prepare->setContentPosRange({0, 0, 0, qreal(bar->maximum())});
        prepare->setContentPos({0, qreal(reached)});
        prepare->accept();
        return true;
    }
    if (event->type() == QEvent::Scroll) {
        const int wanted = qRound(static_cast<QScrollEvent *>(event)->contentPos().y());
        bar->setValue(bar->value() + wanted - std::exchange(reached, wanted));
        return true;
    }
    return false;
}
