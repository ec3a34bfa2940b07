// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QTemporaryDir>

#include <memory>

class QWidget;
class parlo;

/// Someone who uses Parlo: chooses a preset in the connect dialog, reads the tabs and types into them. Knows
/// of the program only what is on the screen.
class user
{
public:
    /// Saves what `window` shows as `name`.png, and on a dark desktop as `name`-dark.png: in the folder that
    /// PICTURES names, where there is one.
    static bool picture(QWidget &window, const QString &name);

    /// The classes of the widgets in `window` that can have the keyboard and no name for a screen reader.
    static QStringList nameless(const QWidget &window);

    user();
    ~user();

    /// Opens Parlo and connects to the loopback `port`; joins `channels`, which commas separate.
    void connectTo(quint16 port, const QString &nick, const QString &channels);

    /// What the tab bar reads, from left to right.
    QStringList tabs() const;
    QString frontTab() const;
    /// Clicks the tab called `tab`. The second one of a name is called "name/2".
    void select(const QString &tab);
    void type(const QString &tab, const QString &text);
    /// Types a text without Return, then presses `keys` ("Ctrl+PgUp Tab") there, or where the keyboard
    /// is if no tab is named.
    void edit(const QString &tab, const QString &text);
    void press(const QString &tab, const QString &keys);
    /// What stands in the input line.
    QString input(const QString &tab) const;
    /// The line with the selection in a tab, and what is selected there, after a "/".
    QString selected(const QString &tab) const;
    /// What a screen reader is told by the row or the field that has the keyboard, and whether that is red.
    static QString heard();
    /// What the tab's label says of its news, to someone who sees the colour; empty when there are none.
    QString news(const QString &tab) const;
    /// Clicks a member in the list of a tab, or the button that reads `what`.
    void click(const QString &tab, const QString &what);
    /// Double-clicks a member.
    void choose(const QString &tab, const QString &nick);
    /// The lines of a tab; none when there is no such tab.
    QStringList lines(const QString &tab) const;
    /// The next line of a tab that was not asked for yet; waits for it. Null when none comes.
    QString nextLine(const QString &tab);
    /// Lines that nobody has asked for, each as "tab: line".
    QStringList unreadLines() const;
    /// The member list of a tab: nicks, each with the sign of the ball in front of it.
    QString members(const QString &tab) const;

    parlo *window() const { return m_window.get(); }

private:
    int indexOf(const QString &tab) const;
    QWidget *pageOf(const QString &tab) const;
    int linesRead(const QString &tab) const;

    QTemporaryDir home;
    std::unique_ptr<parlo> m_window;
};
