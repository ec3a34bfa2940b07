// SPDX-License-Identifier: MIT
#include "tabwindow.h"

using namespace std::chrono_literals;

namespace {

/// While the user resizes the window there are many changes. This delay makes them one write.
constexpr auto savingDelay = 1s;

} // namespace

tabwindow::tabwindow(QWidget *parent, Qt::WindowFlags flags) : QMainWindow(parent, flags)
{
    saving.setSingleShot(true);
    saving.setInterval(savingDelay);
    connect(&saving, &QTimer::timeout, this, &tabwindow::savePrefs);
    connect(&kept, &preferencekeeper::changed, &saving, qOverload<>(&QTimer::start));
}

tabwindow::~tabwindow()
{
    savePrefs();
}

void tabwindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    saving.start();
}

// The size is read only here, because the new size of a maximized window may arrive before its new state.
void tabwindow::savePrefs()
{
    if (!isMaximized() && !isFullScreen())
        kept.setWindowSize(size());
    kept.save();
}
