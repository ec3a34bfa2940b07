// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>

#include <memory>

/// The application object: QApplication, and how a program finds its screen and opens its main window there.
class QPEApplication : public QApplication
{
    Q_OBJECT

public:
    /// A program with a window, which is the only type.
    enum Type { GuiClient };

    /// `argc` must stay alive as long as the application. Where there is no screen, the program ends with
    /// status 1 and one line on stderr that says why.
    QPEApplication(int &argc, char **argv, Type type);
    ~QPEApplication() override;

    /// Shows `window` as the program's main window. On a handheld it is maximized, unless `noMaximize` is
    /// set. Elsewhere it is an ordinary window, 480 x 640 pixels unless it was given a size.
    static void showMainWidget(QWidget *window, bool noMaximize);

protected:
    bool event(QEvent *event) override;

private:
    /// Not every theme that is dark has a grey that can be read there: some leave that of a light one.
    static void mendGrey();

    std::unique_ptr<QWidget> backdrop;
};
