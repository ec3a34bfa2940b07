// SPDX-License-Identifier: MIT
#include "ircuserlist.h"

#include <algorithm>

int ircuserlist::compareItems(const ircchanneluser &a, const ircchanneluser &b)
{
    if (a == b)
        return 0;
    return a < b ? -1 : 1;
}

qsizetype ircuserlist::find(const QString &nick, casemapping names) const
{
    const ircchanneluser probe(nick, {}, names);
    for (qsizetype i = 0; i < size(); ++i) {
        if (compareItems(at(i), probe) == 0)
            return i;
    }
    return -1;
}

// Sorting needs a transitive order, and compareItems() is not one if a nick is in the list twice with two
// ranks. So this sorts by rank and nick alone.
void ircuserlist::sort()
{
    std::stable_sort(begin(), end());
}

void ircuserlist::place(const ircchanneluser &user)
{
    insert(std::upper_bound(cbegin(), cend(), user), user);
}
