// SPDX-License-Identifier: MIT
#pragma once

#include "preferences.h"

#include <QMainWindow>

class QStackedWidget;
class tabbar;

/// What a tab sees of the window that it is in: the bar and the stack, into which it puts itself, and what the
/// user prefers. The window that derives from this makes the bar and the stack before it makes a tab.
class tabwindow : public QMainWindow
{
public:
    using QMainWindow::QMainWindow;

    tabbar *tabBar = nullptr;
    QStackedWidget *widgetStack = nullptr;
    preferences prefs;
};
