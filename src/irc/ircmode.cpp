// SPDX-License-Identifier: MIT
#include "irc/ircmode.h"

#include "irc/ircmessage.h"

ircmode::ircmode(const ircmessage &m)
    : m_who(m.prefix()->nick()), m_target(m.param(0, false)), m_modes(m.param(1, true))
{
    for (int i = 2; i < m.paramCount(); ++i)
        m_args.append(m.param(i, true));
}
