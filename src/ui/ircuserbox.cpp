// SPDX-License-Identifier: MIT
#include "ui/ircuserbox.h"

#include "session/ircchannel.h"
#include "ui/rostermodel.h"

ircuserbox::ircuserbox(QWidget *parent) : QListView(parent), rows(new rostermodel(this))
{
    setModel(rows);
    setUniformItemSizes(true);
}

void ircuserbox::fill(const ircchannel *channel)
{
    if (pending == nullptr)
        QMetaObject::invokeMethod(this, &ircuserbox::settle, Qt::QueuedConnection);
    pending = channel;
}

void ircuserbox::settle()
{
    if (pending != nullptr)
        rows->setMembers(*pending->roster());
    pending = nullptr;
}
