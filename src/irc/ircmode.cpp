// SPDX-License-Identifier: MIT
#include "ircmode.h"

#include "ircmessage.h"
#include "isupport.h"

namespace {

/// A line of 512 bytes (RFC 1459, 2.3) cannot contain more letters. Every channel tab gets each of them.
constexpr int maxLetters = 512;

} // namespace

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

QList<modeletter> ircmode::letters(const isupport &rules) const
{
    const bool onChannel = rules.isChannel(m_target);
    QList<modeletter> all;
    QChar sign = u'+';
    int next = 0;
    for (const QChar c : m_modes) {
        if (c == u'+' || c == u'-') {
            sign = c;
            continue;
        }
        if (all.size() == maxLetters)
            break;
        const bool takesArgument = onChannel && rules.takesArgument(sign, c);
        all.append({sign, c, takesArgument, takesArgument ? arg(next++) : QString()});
    }
    return all;
}
