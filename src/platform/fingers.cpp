// SPDX-License-Identifier: MIT
#include "fingers.h"

#include <QGuiApplication>
#include <QInputDevice>
#include <QMouseEvent>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace {

/// The maximum of a handheld's screen in its shorter direction, in pixels.
constexpr int handheldSide = 640;

} // namespace

bool isSmall(const QScreen &screen)
{
    return std::min(screen.size().width(), screen.size().height()) <= handheldSide;
}

// Matchbox needs that: it would move the focus between a modal dialog and the window behind it without end.
void fillSmallScreen(QWidget *dialog)
{
    if (!isSmall(*dialog->screen()))
        return;
    dialog->setWindowFlags(Qt::Window);
    dialog->setGeometry(dialog->screen()->availableGeometry());
    dialog->setWindowState(Qt::WindowMaximized);
}

bool fingersUsed()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (screen != nullptr && isSmall(*screen))
        return true;
    const auto devices = QInputDevice::devices();
    return std::any_of(devices.begin(), devices.end(), [](const QInputDevice *device) {
        return device->type() == QInputDevice::DeviceType::TouchScreen;
    });
}

int fingerHeight(int usual)
{
    return fingersUsed() ? std::max(usual, fingerSize) : usual;
}

bool mayHold(const QEvent &event, bool before)
{
    if (event.type() == QEvent::MouseButtonPress)
        return static_cast<const QMouseEvent &>(event).button() == Qt::LeftButton;
    return before || event.type() == QEvent::TouchBegin;
}
