// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>

#include <memory>

class QStackedWidget;
class ircsession;
class tabbar;

/// The main window: the pages of the tabs above the tab bar. Tabs put themselves into both.
class parlo : public QMainWindow
{
    Q_OBJECT

public:
    /// Starts the session and runs its connect dialog, which returns before the window is shown.
    explicit parlo(QWidget *parent = nullptr, const char *name = nullptr, Qt::WindowFlags flags = {});
    ~parlo() override;

    tabbar *tabBar;
    QStackedWidget *widgetStack;
    QWidget *mainBox;

private:
    /// Never called: the window only ends its session, before the bar and the stack go that the tabs are in.
    std::unique_ptr<ircsession> session;
};
