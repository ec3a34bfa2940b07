// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QLineEdit;
class logview;

/// The field under a view in which a text is typed that is to be found there. Return walks to older lines,
/// Shift+Return to newer ones, and round at the ends; Ctrl+Return opens a web address that was found. Escape
/// closes it.
class findbar : public QWidget
{
    Q_OBJECT

public:
    /// A hidden one, that looks in `view`.
    findbar(logview *view, QWidget *parent);

    /// Shows it, with the keyboard.
    void open();

Q_SIGNALS:
    void closed();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void close();
    void find(bool newer);
    /// Takes back what the field shows and tells of the search before.
    void clearResult();

    logview *view;
    QLineEdit *field;
};
