// SPDX-License-Identifier: MIT
#include "linkclick.h"

#include <QApplication>
#include <QDesktopServices>

#include <utility>

void linkclick::press(const QPoint &point)
{
    pressedAt = point;
    pressed = addressAt(point);
}

void linkclick::release(const QPoint &point)
{
    const QUrl address = std::exchange(pressed, {});
    const bool moved = (point - pressedAt).manhattanLength() >= QApplication::startDragDistance();
    if (address.isValid() && !moved && addressAt(point) == address)
        QDesktopServices::openUrl(address);
}

Qt::CursorShape linkclick::cursorAt(const QPoint &point) const
{
    return addressAt(point).isValid() ? Qt::PointingHandCursor : Qt::IBeamCursor;
}
