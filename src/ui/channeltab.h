// SPDX-License-Identifier: MIT
#pragma once

#include "irctab.h"

class QPushButton;
class ircchannel;
class ircuserbox;
class widthhandle;

/// The tab of one channel: the view, the member list beside it, and a button in the view's corner that shows
/// and hides the list. In a wide window the width of the list can be changed. Each event is first shown, then applied to
/// the roster, then the list is filled from the roster.
class channeltab : public irctab
{
    Q_OBJECT

public:
    /// `roster` is that of the channel. It belongs to the session and must outlive the tab.
    channeltab(tabwindow *window, ircchannel *roster, const QString &name);

    void follow(const isupport &serverRules, const manners &sessionManner, const ircuser &we) override;

    ircchannel *channel;
    QWidget *splitBox;
    ircuserbox *userBox;
    QPushButton *toggleButton;
    bool userListShown = true;

public Q_SLOTS:
    void showHideUserlist();
    void join(ircuser *who);
    void part(ircuser *who, const QString &reason);
    void quit(ircuser *who, const QString &reason);
    void kick(ircuser *who, const QString &victim, const QString &reason);
    /// Applies one chunk of a NAMES listing; the list is filled when the listing ends.
    void names(QStringList *names);
    void endofnames();
    /// Applies one letter of a mode change to the roster, if it is for this channel. modes() has already
    /// shown it.
    void mode(ircmode *m);
    void nick(const QString &oldNick, const QString &newNick);

public:
    /// We are in the channel again: its roster starts anew.
    void rejoined();
    /// Many people have left or joined at once, and the roster has it already.
    void crowd(bool left, const QString &text);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// Gives the list and its handle the room that they may have now.
    void fitUserBox();
    /// Says on the button what it does, and how many members there are.
    void nameToggle();
    /// The nicks of the members, in the order of the list.
    QStringList nicks() const;

    widthhandle *handle;
};
