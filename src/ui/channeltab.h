// SPDX-License-Identifier: MIT
#pragma once

#include "irctab.h"

class QPushButton;
class ircchannel;
class ircuserbox;

/// The tab of one channel: the view, the member list beside it, and a button in the view's corner that shows
/// and hides the list. Every event is shown first, then goes into the roster, then the list is drawn anew.
class channeltab : public irctab
{
    Q_OBJECT

public:
    /// `roster` is the channel's; it belongs to the session and must outlive the tab.
    channeltab(tabwindow *window, ircchannel *roster, const QString &name);

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
    /// Takes one chunk of a NAMES listing; the list is drawn when the listing ends.
    void names(QStringList *names);
    void endofnames();
    /// Applies one letter of a mode change to the roster, if it is this channel's; modes() has shown it.
    void mode(ircmode *m);
    void nick(const QString &oldNick, const QString &newNick);

public:
    /// We are in the channel again: its roster starts anew.
    void rejoined();
    /// Many people have left or joined at once, and the roster has it already.
    void crowd(bool left, const QString &text);

private:
    /// Who is here, in the order of the list.
    QStringList nicks() const;
};
