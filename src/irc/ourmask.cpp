// SPDX-License-Identifier: MIT
#include "ourmask.h"

#include "ircmessage.h"

using namespace Qt::StringLiterals;

void ourmask::note(const ircmessage &line, const QString &nick)
{
    if (line.prefix()->nick() != nick || line.prefix()->host().isEmpty())
        return;
    shown = *line.prefix();
    if (line.command() == "CHGHOST"_L1) {
        shown.setUser(line.param(0, true));
        shown.setHost(line.param(1, true));
    }
}

ircuser ourmask::with(const QString &nick) const
{
    ircuser us = shown;
    us.setNick(nick);
    return us;
}
