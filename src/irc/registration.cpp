// SPDX-License-Identifier: MIT
#include "registration.h"

#include "ircuser.h"

#include <utility>

QStringList registration::begin(const ircuser &identity, const QString &server, const QStringList &channels)
{
    m_stage = stage::registering;
    QStringList lines{u"USER " + identity.user() + u" HOSTNAME " + server + u" :" + identity.realname(),
                      u"NICK " + identity.nick()};
    if (!channels.isEmpty())
        lines.append(u"JOIN " + channels.join(u','));
    return lines;
}

bool registration::welcome()
{
    return std::exchange(m_stage, stage::welcomed) != stage::welcomed;
}
