// SPDX-License-Identifier: MIT
#pragma once

#include "ircchanneluser.h"

#include <QList>

/// The members of one channel. Nicks need not be unique. A copy is cheap as long as neither side changes.
class ircuserlist : public QList<ircchanneluser>
{
public:
    /// 0 when both are the same nick, -1 when `a` stands before `b` in the order of rank and nick, else 1.
    static int compareItems(const ircchanneluser &a, const ircchanneluser &b);

    /// The index of the first entry with this nick, whatever the case, or -1.
    qsizetype find(const QString &nick, casemapping names) const;
    void sort();
    /// Puts `user` at its place in a list that is sorted, behind those that are its equal.
    void place(const ircchanneluser &user);
};
