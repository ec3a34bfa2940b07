// SPDX-License-Identifier: MIT
#pragma once

#include "notifier.h"

#include <QObject>

struct event;
class irctab;
class tabkeeper;
class tabwindow;

/// Calls the user when a line is for them and they do not see it: the window asks for attention, and the desktop shows a
/// notification, one for each tab. A click on it brings window and tab to the front. What has been seen is withdrawn.
class attention : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive this.
    attention(tabwindow *window, tabkeeper &tabs);

    /// `what` is about to be shown in `tab`.
    void happened(const struct event &what, irctab *tab);
    /// The user looks at `tab`, if the window is active.
    void seen(const irctab *tab);

private:
    void bringToFront(const QString &tabName);

    tabwindow *window;
    tabkeeper &tabs;
    notifier desktop;
};
