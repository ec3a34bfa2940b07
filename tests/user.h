// SPDX-License-Identifier: MIT
#pragma once

#include "chatinput.h"
#include "ircview.h"
#include "parlo.h"
#include "tabbar.h"

#include <QMap>
#include <QPushButton>
#include <QStackedWidget>
#include <QTemporaryDir>

#include <memory>

/// A user of Parlo: chooses a preset in the connect dialog, reads the tabs and types into them. Knows only
/// what is on the screen.
class user
{
public:
    /// Saves what `window` shows as `name`.png, and on a dark desktop as `name`-dark.png: in the folder that
    /// PICTURES names, if it is set.
    static bool picture(QWidget &window, const QString &name);

    /// The classes of the widgets in `window` that can get the focus but have no name for a screen reader.
    static QStringList nameless(const QWidget &window);

    user() { qputenv("XDG_CONFIG_HOME", home.path().toUtf8()); }

    /// Opens Parlo and connects to `server`; joins `channels`, which commas separate. The preset has `more` keys with
    /// their values.
    void connectTo(const QString &server, quint16 port, const QString &nick, const QString &channels,
                   const QMap<QString, QString> &more = {});
    void connectTo(quint16 port, const QString &nick, const QString &channels)
    {
        connectTo(QStringLiteral("127.0.0.1"), port, nick, channels);
    }

    /// The labels in the tab bar, from left to right.
    QStringList tabs() const { return m_window->tabBar->labels(); }
    QString frontTab() const { return tabs().value(m_window->tabBar->currentIndex()); }
    /// Clicks the tab called `tab`. The second one of a name is called "name/2".
    void select(const QString &tab);
    /// Types a text without Return.
    void edit(const QString &tab, const QString &text) const { in<chatinput>(tab)->setText(text); }
    /// Presses `keys` ("Ctrl+PgUp Tab") in the input line, or where the focus is if no tab is named.
    void press(const QString &tab, const QString &keys);
    /// The text of the input line.
    QString input(const QString &tab) const { return in<chatinput>(tab)->text(); }
    /// Why nothing can be said, as the empty input line says it; whole, where the line has no room for it.
    QString state(const QString &tab) const { return in<chatinput>(tab)->accessibleDescription(); }
    /// The line with the selection in a tab, and what is selected there, after a "/".
    QString selected(const QString &tab) const;
    /// What a screen reader gets for the row or the field that has the focus, and whether that is red.
    static QString heard();
    /// The activity that a tab's label shows, in words; empty if there is none or the label has no colour.
    QString activity(const QString &tab) const;
    /// Clicks a member in the list of a tab, or the button that reads `what`.
    void click(const QString &tab, const QString &what);
    /// Double-clicks a member.
    void choose(const QString &tab, const QString &nick);
    /// The entries in the menu of a member, one of which the user may choose.
    QStringList menu(const QString &tab, const QString &nick, const QString &chosen = {});
    /// What a screen reader gets for the button in the corner of a tab.
    QString button(const QString &tab) const { return in<QPushButton>(tab)->accessibleName(); }
    /// The size of the window, how many points larger than usual the tab's text is, and whether its members
    /// are "shown" or "hidden".
    QString looks(const QString &tab) const;
    /// The next unread line of a tab; waits for it. Null if none comes.
    QString nextLine(const QString &tab);
    /// All unread lines, each as "tab: line".
    QStringList unreadLines();
    /// The member list of a tab: nicks, each with the sign of the ball in front of it.
    QString members(const QString &tab) const;

    parlo *window() const { return m_window.get(); }

private:
    int indexOf(const QString &tab) const;
    /// Pages are in the stack in the order of the tabs.
    QWidget *pageOf(const QString &tab) const { return m_window->widgetStack->widget(indexOf(tab)); }
    /// The part of this kind in a tab.
    template <typename Part>
    Part *in(const QString &tab) const
    {
        return pageOf(tab)->findChild<Part *>();
    }
    /// The next unread line of a page. Null if there is none.
    static QString takeLine(QWidget *page);

    QTemporaryDir home;
    std::unique_ptr<parlo> m_window;
};
