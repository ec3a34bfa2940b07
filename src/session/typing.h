// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

class connection;
class irctab;
class tabkeeper;

/// What the user types in a session by address, and what becomes of it: only what was sent is shown as said. What cannot be
/// sent stays in the input line, and the tab says why.
class typing : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive this.
    typing(connection &conn, tabkeeper &tabs);

    /// Does what `text` says, which was typed in `tab`.
    void take(const QString &text, irctab *tab);
    /// Does a line of a preset, as if it were typed in the tab of the server. One that would lead away from the connection
    /// does nothing.
    void perform(const QString &line);

private:
    void say(irctab *tab, const QString &text, bool action);
    void showSaid(const QString &target, const QString &text, bool action);

    connection &conn;
    tabkeeper &tabs;
};
