// SPDX-License-Identifier: MIT
#include "widthhandle.h"

#include "fingers.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleOption>
#include <QStylePainter>

namespace {

/// Its own width, in pixels: for a mouse, and for a finger.
constexpr int mouseWidth = 6;
constexpr int fingerWidth = 20;
/// What a key changes, in pixels.
constexpr int keyStep = 10;

} // namespace

widthhandle::widthhandle(QWidget *right, QWidget *parent) : QWidget(parent), pulled(right)
{
    setFixedWidth(fingersUsed() ? fingerWidth : mouseWidth);
    setCursor(Qt::SplitHCursor);
    setFocusPolicy(Qt::TabFocus);
}

void widthhandle::mousePressEvent(QMouseEvent *event)
{
    startX = event->globalPosition().toPoint().x();
    startWidth = pulled->width();
}

void widthhandle::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons().testFlag(Qt::LeftButton))
        Q_EMIT wanted(startWidth + startX - event->globalPosition().toPoint().x());
}

void widthhandle::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Left)
        Q_EMIT wanted(pulled->width() + keyStep);
    else if (event->key() == Qt::Key_Right)
        Q_EMIT wanted(pulled->width() - keyStep);
    else
        QWidget::keyPressEvent(event);
}

void widthhandle::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    update();
}

void widthhandle::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    update();
}

void widthhandle::paintEvent(QPaintEvent * /*event*/)
{
    QStylePainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    option.state |= QStyle::State_Horizontal;
    if (hasFocus())
        painter.fillRect(rect(), palette().highlight());
    painter.drawControl(QStyle::CE_Splitter, option);
}
