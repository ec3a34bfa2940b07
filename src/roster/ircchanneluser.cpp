// SPDX-License-Identifier: MIT
#include "ircchanneluser.h"

ircchanneluser::ircchanneluser(const QString &mask, const QString &prefixes)
    : ircuser(mask),
      op(prefixes.contains(u'@')),
      halfop(prefixes.contains(u'%')),
      voice(prefixes.contains(u'+'))
{
}

bool operator<(const ircchanneluser &a, const ircchanneluser &b)
{
    if (a.op != b.op)
        return a.op;
    if (a.halfop != b.halfop)
        return a.halfop;
    if (a.voice != b.voice)
        return a.voice;
    return a.key() < b.key();
}
