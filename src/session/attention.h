// SPDX-License-Identifier: MIT
#pragma once

#include "notifier.h"

#include <QObject>

struct event;
class irctab;
class tabkeeper;
class tabwindow;

/// Tells the user of a line for them that they do not see: the window asks for attention, and the desktop shows a
/// notification, one for each tab, if the user wants that. A click on it brings window and tab to the front. It goes
/// when the user sees the tab.
class attention : public QObject
{
    Q_OBJECT

public:
    /// The window and the tabs must outlive this.
    attention(tabwindow *window, tabkeeper &tabs);

    /// `what` will be shown in `tab` next.
    void happened(const struct event &what, irctab *tab);
    /// `tab` has come to the front, or the window may have become active: takes away what the user sees now.
    void seen(const irctab *tab);

private:
    void bringToFront(const QString &tabName);

    tabwindow *window;
    tabkeeper &tabs;
    notifier desktop;
};
