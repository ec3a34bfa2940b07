// SPDX-License-Identifier: MIT
#pragma once

#include "membermenu.h"

#include <QListView>
#include <QTimer>

class ircchannel;
class ircuser;
class isupport;
class rostermodel;
struct manners;

/// The member list of a channel tab: one row for each member, with a coloured ball in front of those with a
/// rank. Letters that are typed go to the nick that begins with them.
///
/// A double click, Return and a finger's long press ask for a query. The right button, the menu key and a finger that is
/// held even longer open the member's menu.
class ircuserbox : public QListView
{
    Q_OBJECT

public:
    explicit ircuserbox(QWidget *parent);

    /// From now on, goes by these rules of a server and these manners of a session, and `we` are the user; all must
    /// outlive the list.
    void follow(const isupport &serverRules, const manners &sessionManner, const ircuser &we);
    /// Shows a copy of the roster of `channel`. It is taken when control is back in the event loop, so that
    /// many calls cost one copy. Code that changes the roster and does not call this must call takePending()
    /// first. The current row stays with its member or, if the member has left, where it was.
    void fill(const ircchannel *channel);
    /// Copies the roster now if a copy is pending.
    void takePending();

Q_SIGNALS:
    /// The user asks for this, for the member with this nick.
    void asked(memberaction what, const QString &nick);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    void hold(const QPoint &point);
    /// The row of a member; invalid if there is none of that nick.
    QModelIndex indexOf(const QString &nick) const;
    /// Opens the menu of the member at a row; `at` is on the screen.
    void showMenu(const QModelIndex &row, const QPoint &at);

    const ircchannel *pending = nullptr;
    rostermodel *rows;
    const isupport *rules;
    const manners *manner;
    const ircuser *us = nullptr;
    /// Runs while a finger that has made a long press is still down, on this member and at this point. Another one may
    /// come to stand there meanwhile.
    QTimer holding{this};
    QString held;
    QPoint heldAt;
    /// Whether what is down may become a long press.
    bool holds = false;
};
