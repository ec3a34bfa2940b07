// SPDX-License-Identifier: MIT
#pragma once

#include "preferences.h"

#include <QMainWindow>
#include <QTimer>

class QStackedWidget;
class tabbar;

/// What a tab sees of the window that it is in: the bar and the stack, into which it puts itself, and what the
/// user prefers. The window that derives from this makes the bar and the stack before it makes a tab.
///
/// The preferences are in the settings file a moment after they change, the size of the window among them.
class tabwindow : public QMainWindow
{
public:
    /// Starts with the preferences in the settings file.
    explicit tabwindow(QWidget *parent = nullptr, Qt::WindowFlags flags = {});
    ~tabwindow() override;

    const preferences &prefs() const { return m_prefs; }
    /// Changes one of the preferences: prefer(&preferences::fontSize, 12).
    template <typename Value>
    void prefer(Value preferences::*which, const Value &value)
    {
        m_prefs.*which = value;
        saving.start();
    }

    tabbar *tabBar = nullptr;
    QStackedWidget *widgetStack = nullptr;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void savePrefs();

    preferences m_prefs;
    /// What the settings file holds.
    preferences savedPrefs;
    QTimer saving;
};
