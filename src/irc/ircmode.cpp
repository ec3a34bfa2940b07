// SPDX-License-Identifier: MIT
#include "ircmode.h"

#include "ircmessage.h"

ircmode::ircmode(const ircmessage &m)
    : m_prefix(*m.prefix()),
      m_who(m_prefix.nick()),
      m_time(m.tags().time()),
      m_target(m.param(0, false)),
      m_modes(m.param(1, true))
{
    for (int i = 2; i < m.paramCount(); ++i)
        m_args.append(m.param(i, true));
}

ircmode::ircmode(const ircmode &all, QChar sign, QChar letter, const QString &argument)
    : m_prefix(all.m_prefix),
      m_who(all.m_who),
      m_time(all.m_time),
      m_target(all.m_target),
      m_modes(QString(sign) + letter),
      m_args(argument)
{
    ircmessage::stripColon(m_args.first());
}
