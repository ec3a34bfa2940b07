// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QLineEdit;
class logview;

/// The search field below a view. Return searches older lines, Shift+Return newer ones, and both continue at
/// the other end. Ctrl+Return opens a web address that was found. Escape closes the field.
class findbar : public QWidget
{
    Q_OBJECT

public:
    /// Searches in `view`. Hidden at first.
    findbar(logview *view, QWidget *parent);

    /// Shows the field and gives it the focus.
    void open();

Q_SIGNALS:
    void closed();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void close();
    void find(bool newer);
    /// Clears the result of the last search, both what is shown and what a screen reader gets.
    void clearResult();

    logview *view;
    QLineEdit *field;
};
