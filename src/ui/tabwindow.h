// SPDX-License-Identifier: MIT
#pragma once

#include "preferencekeeper.h"

#include <QMainWindow>
#include <QTimer>

class QStackedWidget;
class tabbar;

/// The part of the main window that tabs use: the bar and the stack, to which they add themselves, and the
/// preferences. The derived window makes the bar and the stack before the first tab.
///
/// The preferences, with the size of the window, are saved a moment after they change.
class tabwindow : public QMainWindow
{
public:
    /// Starts with the preferences in the settings file.
    explicit tabwindow(QWidget *parent = nullptr, Qt::WindowFlags flags = {});
    ~tabwindow() override;

    const preferences &prefs() const { return kept.now(); }
    /// Changes one of the preferences: prefer(&preferences::fontSize, 12).
    template <typename Value>
    void prefer(Value preferences::*which, const Value &value)
    {
        preferences wanted = prefs();
        wanted.*which = value;
        kept.change(wanted);
    }
    /// Changes them all at once, and has the signal that they have changed. It is an object of its own because parlo's
    /// meta-object names QMainWindow as the one above it.
    preferencekeeper *keeper() { return &kept; }

    tabbar *tabBar = nullptr;
    QStackedWidget *widgetStack = nullptr;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void savePrefs();

    preferencekeeper kept;
    QTimer saving;
};
