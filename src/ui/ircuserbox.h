// SPDX-License-Identifier: MIT
#pragma once

#include <QListView>

class ircchannel;
class rostermodel;

/// The member list of a channel tab: one row a member, with a coloured ball in front of those with a rank.
///
/// Return and a finger's long press count as a double click.
class ircuserbox : public QListView
{
    Q_OBJECT

public:
    explicit ircuserbox(QWidget *parent);

    /// Shows the roster of `channel` as it is now; later changes show at the next call. The roster is taken
    /// when control is back in the event loop, once for all that happened in one go: whoever changes it
    /// without calling this afterwards calls takePending() before. The current row stays with its member or, when
    /// the member has gone, where it was.
    void fill(const ircchannel *channel);
    /// Takes the roster now, if it is still to be taken.
    void takePending();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    const ircchannel *pending = nullptr;
    rostermodel *rows;
};
