// SPDX-License-Identifier: MIT
#include "qpeapplication.h"

#include "fingers.h"

#include <QScreen>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize desktopSize(480, 640);

/// Whether windows have this screen to themselves: it is small, or nothing manages windows on it.
bool isHandheld(const QScreen &screen)
{
    static const QStringList withoutWindows{u"linuxfb"_s, u"eglfs"_s, u"minimalegl"_s, u"vkkhrdisplay"_s,
                                            u"vnc"_s};
    return isSmall(screen) || withoutWindows.contains(QGuiApplication::platformName());
}

} // namespace

QPEApplication::QPEApplication(int &argc, char **argv, Type /*type*/) : QApplication(argc, argv)
{
    // Its icon and its place in a task bar come from there; a Wayland window has no icon of its own.
    setDesktopFileName(u"chat.parlo.Parlo"_s);
    // There all windows are drawn into the first one, and the screen goes dark with it.
    if (platformName() == u"eglfs") {
        backdrop = std::make_unique<QWidget>();
        backdrop->setAttribute(Qt::WA_QuitOnClose, false);
        backdrop->showFullScreen();
    }
}

QPEApplication::~QPEApplication() = default;

void QPEApplication::showMainWidget(QWidget *window, bool noMaximize)
{
    const QScreen &screen = *window->screen();
    if (!noMaximize && isHandheld(screen)) {
        window->setGeometry(screen.availableGeometry());
        window->showMaximized();
        return;
    }
    const QSize wanted = window->testAttribute(Qt::WA_Resized) ? window->size() : desktopSize;
    window->resize(wanted.boundedTo(screen.availableSize()));
    window->show();
}
