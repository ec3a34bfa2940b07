// SPDX-License-Identifier: MIT
#include "ircchanneluser.h"

ircchanneluser::ircchanneluser(const QString &mask, const QString &prefixes, casemapping names)
    : ircuser(mask, names),
      op(prefixes.contains(u'@')),
      halfop(prefixes.contains(u'%')),
      voice(prefixes.contains(u'+'))
{
}

void ircchanneluser::setHigher(QChar letter, bool held)
{
    if (letter < u'A' || letter > u'z')
        return;
    const quint64 bit = quint64{1} << (letter.unicode() - u'A');
    higher = held ? higher | bit : higher & ~bit;
}

bool operator<(const ircchanneluser &a, const ircchanneluser &b)
{
    if (a.isOp() != b.isOp())
        return a.isOp();
    if (a.halfop != b.halfop)
        return a.halfop;
    if (a.voice != b.voice)
        return a.voice;
    return a.key() < b.key();
}
