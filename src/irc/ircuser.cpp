// SPDX-License-Identifier: MIT
#include "ircuser.h"

ircuser::ircuser(QString mask, casemapping names)
{
    if (mask.startsWith(u':'))
        mask.remove(0, 1);
    const qsizetype bang = mask.indexOf(u'!');
    if (bang < 0) {
        setNick(mask, names);
        return;
    }
    const qsizetype at = mask.indexOf(u'@', bang);
    setNick(mask.left(bang), names);
    m_user = mask.mid(bang + 1, at < 0 ? -1 : at - bang - 1);
    if (at >= 0)
        m_host = mask.mid(at + 1);
}

void ircuser::setNick(const QString &nick, casemapping names)
{
    m_nick = nick;
    m_key = folded(nick, names);
}
