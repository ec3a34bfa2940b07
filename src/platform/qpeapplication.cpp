// SPDX-License-Identifier: MIT
#include "qpeapplication.h"

#include "fingers.h"

#include <QPalette>
#include <QScreen>
#include <QWidget>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize desktopSize(480, 640);
/// Of 255: how much of the text's colour its grey has, as in Qt's own palettes.
constexpr int greyAlpha = 128;
/// Of 255: a grey that is nearer to the background cannot be read.
constexpr int minGreyStep = 64;

/// Whether a window fills this screen: it is small, or there is no window manager.
bool isHandheld(const QScreen &screen)
{
    static const QStringList withoutWindows{u"linuxfb"_s, u"eglfs"_s, u"minimalegl"_s, u"vkkhrdisplay"_s,
                                            u"vnc"_s};
    return isSmall(screen) || withoutWindows.contains(QGuiApplication::platformName());
}

QtMessageHandler usualHandler = nullptr;
/// Qt's messages from its search for a screen.
QStringList messages;

[[noreturn]] void endWithoutScreen()
{
    std::fprintf(stderr, "parlo: no screen: %s\n", qPrintable(messages.join(u"; "_s).simplified()));
    std::_Exit(EXIT_FAILURE);
}

void keepMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtDebugMsg)
        return usualHandler(type, context, text);
    messages.append(qFormatLogMessage(type, context, text));
    if (type == QtFatalMsg)
        endWithoutScreen();
}

/// To be called before the application object is made: without a screen some of Qt's plugins abort there,
/// after several lines on stderr, and others go on until the first window crashes.
void beginScreenSearch()
{
    usualHandler = qInstallMessageHandler(keepMessage);
}

void endScreenSearch()
{
    if (QGuiApplication::primaryScreen() == nullptr)
        endWithoutScreen();
    qInstallMessageHandler(usualHandler);
    for (const QString &message : std::as_const(messages))
        std::fprintf(stderr, "%s\n", qPrintable(message));
}

} // namespace

QPEApplication::QPEApplication(int &argc, char **argv, Type /*type*/)
    : QApplication((beginScreenSearch(), argc), argv)
{
    endScreenSearch();
    mendGrey();
    // On Wayland a window gets its icon from the desktop file.
    setDesktopFileName(u"chat.parlo.Parlo"_s);
    // There Qt draws all windows into the first one, and when that closes the screen stays dark.
    if (platformName() == u"eglfs") {
        backdrop = std::make_unique<QWidget>();
        backdrop->setAttribute(Qt::WA_QuitOnClose, false);
        backdrop->showFullScreen();
    }
}

QPEApplication::~QPEApplication() = default;

bool QPEApplication::event(QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange)
        mendGrey();
    return QApplication::event(event);
}

void QPEApplication::mendGrey()
{
    const QPalette now = palette();
    // Only what is set here; the rest still follows the desktop.
    QPalette mended;
    mended.setResolveMask(0);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const QColor grey = now.color(group, QPalette::PlaceholderText);
        const int base = qGray(now.color(group, QPalette::Base).rgb());
        const int shown = base + (qGray(grey.rgb()) - base) * grey.alpha() / 255;
        QColor wanted = now.color(group, QPalette::Text);
        wanted.setAlpha(greyAlpha);
        if (qAbs(shown - base) < minGreyStep && wanted != grey)
            mended.setColor(group, QPalette::PlaceholderText, wanted);
    }
    if (mended.resolveMask() != 0)
        setPalette(mended);
}

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
