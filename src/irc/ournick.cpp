// SPDX-License-Identifier: MIT
#include "ournick.h"

#include <utility>

using namespace Qt::StringLiterals;

QString ournick::forNewLink(const QString &had)
{
    asked.clear();
    return had == given ? m_wanted : had;
}

void ournick::welcomed(const QString &first, const QString &nick)
{
    m_wanted = asked.isEmpty() ? first : std::exchange(asked, {});
    given = nick;
}

void ournick::typed(const QString &line)
{
    if (line.startsWith("NICK "_L1, Qt::CaseInsensitive))
        asked = line.section(u' ', 1, 1, QString::SectionSkipEmpty);
    if (asked.startsWith(u':'))
        asked.remove(0, 1);
}

void ournick::renamed(const QString &nick)
{
    // Some servers cut a nick that is too long.
    if (!nick.isEmpty() && asked.startsWith(nick, Qt::CaseInsensitive)) {
        m_wanted = nick;
        asked.clear();
    }
    given = nick;
}
