// SPDX-License-Identifier: MIT
#include "tabwindow.h"

#include "config.h"

using namespace std::chrono_literals;

namespace {

/// Long enough for one write after many steps of a window that is made larger.
constexpr auto savingDelay = 1s;

} // namespace

tabwindow::tabwindow(QWidget *parent, Qt::WindowFlags flags)
    : QMainWindow(parent, flags), m_prefs(preferences::load(Config::settingsName())), savedPrefs(m_prefs)
{
    saving.setSingleShot(true);
    saving.setInterval(savingDelay);
    connect(&saving, &QTimer::timeout, this, &tabwindow::savePrefs);
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

// The size is taken only now: while a window is being maximized, the new size may come before the new state.
void tabwindow::savePrefs()
{
    if (!isMaximized() && !isFullScreen())
        m_prefs.windowSize = size();
    if (m_prefs != savedPrefs && m_prefs.save(Config::settingsName()))
        savedPrefs = m_prefs;
}
