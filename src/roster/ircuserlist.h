// SPDX-License-Identifier: MIT
#pragma once

#include "ircchanneluser.h"

#include <QList>

/// The members of one channel. Nicks need not be unique. A copy is cheap until one of the two changes.
class ircuserlist : public QList<ircchanneluser>
{
public:
    /// 0 if both are the same nick, -1 if `a` comes before `b` by rank and nick, else 1.
    static int compareItems(const ircchanneluser &a, const ircchanneluser &b);

    /// The index of the first entry with this nick, whatever the case, or -1.
    qsizetype find(const QString &nick, casemapping names) const;
    void sort();
    /// Inserts `user` into the sorted list, after equal ones.
    void place(const ircchanneluser &user);
};
