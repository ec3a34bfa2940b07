// SPDX-License-Identifier: MIT
#pragma once

#include <QListView>

class ircchannel;
class rostermodel;

/// The member list of a channel tab: one row for each member, with a coloured ball in front of those with a
/// rank.
///
/// Return and a finger's long press count as a double click.
class ircuserbox : public QListView
{
    Q_OBJECT

public:
    explicit ircuserbox(QWidget *parent);

    /// Shows a copy of the roster of `channel`. It is taken when control is back in the event loop, so that
    /// many calls cost one copy. Code that changes the roster and does not call this must call takePending()
    /// first. The current row stays with its member or, if the member has left, where it was.
    void fill(const ircchannel *channel);
    /// Copies the roster now if a copy is pending.
    void takePending();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    const ircchannel *pending = nullptr;
    rostermodel *rows;
};
