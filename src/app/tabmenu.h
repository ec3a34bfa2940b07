// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QWidget;

/// The menu of the tab bar: a right click opens it, a finger or a button that is held, and the menu key. It runs no
/// event loop of its own.
class tabmenu : public QObject
{
    Q_OBJECT

public:
    /// Watches `bar`, its parent.
    explicit tabmenu(QWidget *bar);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void settingsWanted();

private:
    void open(const QPoint &where);

    QWidget *bar;
    /// Whether what is down may become a long press.
    bool holds = false;
};
