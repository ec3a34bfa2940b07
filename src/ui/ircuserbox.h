// SPDX-License-Identifier: MIT
#pragma once

#include <QListView>

class ircchannel;
class rostermodel;

/// The member list of a channel tab: one row a member, with a coloured ball in front of those with a rank.
class ircuserbox : public QListView
{
    Q_OBJECT

public:
    explicit ircuserbox(QWidget *parent);

    /// Shows the roster of `channel` as it is now; later changes show at the next call.
    void fill(const ircchannel *channel);

private:
    rostermodel *rows;
};
