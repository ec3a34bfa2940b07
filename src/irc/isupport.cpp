// SPDX-License-Identifier: MIT
#include "isupport.h"

const isupport &isupport::classic()
{
    static const isupport rules;
    return rules;
}

isupport::rank isupport::rankOfMode(QChar letter) const
{
    const qsizetype place = prefixModes.indexOf(letter);
    if (place < 0)
        return rank::none;
    // A rank above operator is shown as operator.
    if (place <= prefixModes.indexOf(u'o'))
        return rank::op;
    if (letter == u'h')
        return rank::halfop;
    return letter == u'v' ? rank::voice : rank::none;
}

bool isupport::takesArgument(QChar sign, QChar letter) const
{
    return prefixModes.contains(letter) || alwaysWithArgument.contains(letter) ||
           (sign == u'+' && setWithArgument.contains(letter));
}
