// SPDX-License-Identifier: MIT
#include "ui/ircuserbox.h"

#include "session/ircchannel.h"
#include "ui/rostermodel.h"

ircuserbox::ircuserbox(QWidget *parent) : QListView(parent), rows(new rostermodel(this))
{
    setModel(rows);
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void ircuserbox::fill(const ircchannel *channel)
{
    rows->setMembers(*channel->roster());
}
