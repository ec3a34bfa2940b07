// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>

#include <memory>

/// The application object: QApplication, and the one rule for how a program's main window opens.
class QPEApplication : public QApplication
{
    Q_OBJECT

public:
    /// A program with a window of its own; there is no other kind here.
    enum Type { GuiClient };

    /// `argc` must stay alive as long as the application. Where there is no screen, the program ends with status 1
    /// and one line on stderr that says why.
    QPEApplication(int &argc, char **argv, Type type);
    ~QPEApplication() override;

    /// Shows `window` as the program's main window: over the full screen on a handheld, and as an ordinary
    /// window, 480 x 640 pixels unless it was given a size, elsewhere. `noMaximize` asks for an ordinary
    /// window everywhere.
    static void showMainWidget(QWidget *window, bool noMaximize);

private:
    std::unique_ptr<QWidget> backdrop;
};
