// SPDX-License-Identifier: MIT
#pragma once

#include "tabwindow.h"

#include <QPointer>

#include <memory>

class ircsession;
class settingsbox;

/// The main window: the pages of the tabs, and the tab bar below them. Tabs add themselves to both.
///
/// Ctrl+plus, Ctrl+minus and Ctrl+0 change the size of the text in all views, and Ctrl+T shows and hides
/// the times. Ctrl+comma and the menu of the tab bar open the page "Settings".
class parlo : public tabwindow
{
    Q_OBJECT

public:
    /// Starts the session and runs its connect dialog, which returns before the window is shown; it proposes `address`.
    explicit parlo(QWidget *parent = nullptr, const char *name = nullptr, Qt::WindowFlags flags = {},
                   const QString &address = {});
    ~parlo() override;

    QWidget *mainBox;

private:
    void addViewKeys();
    void zoom(int steps);
    /// Points; 0 means the desktop's own size.
    void setFontSize(int points);
    /// Brings the settings to the front, which are open at most once.
    void openSettings();
    /// From now on `wanted` holds, in all that is open, too.
    void applySettings(preferences wanted);
    /// Gives the text in all views, present and future, the size in the preferences.
    void applyFontSize();

    /// Deleted before the bar and the stack, because its tabs are in them.
    std::unique_ptr<ircsession> session;
    QPointer<settingsbox> settings;
};
