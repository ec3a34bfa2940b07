// SPDX-License-Identifier: MIT
#pragma once

#include "isupport.h"

#include <QStringList>

class ircuser;

/// The ignored people: those of whom the user wants to hear nothing, as masks NICK!USER@HOST. In a mask "*" stands for any
/// characters, and "?" for one (RFC 2812, 2.5). The server says which letters are the same.
class ignorelist
{
public:
    /// In masks, and in characters of a mask. What somebody does is compared with all of them.
    static constexpr qsizetype maxEntries = 200;
    static constexpr qsizetype maxLength = 200;

    ignorelist() = default;
    /// With the masks that entries() gave. Those that are no masks are dropped.
    explicit ignorelist(const QStringList &kept);

    /// The mask that a nick or a part of a mask means: "bea" is "bea!*@*", "*@host" is "*!*@host". Empty if it is empty or
    /// too long, or has white space or control characters.
    static QString maskOf(const QString &nickOrMask);

    /// Adds the mask that `nickOrMask` means. False if nothing changed: it is there, it is no mask, or the list is full.
    bool add(const QString &nickOrMask, const isupport &rules);
    /// Removes it. False if it was not there.
    bool remove(const QString &nickOrMask, const isupport &rules);
    /// The masks, in the order in which they were added. None has a space.
    const QStringList &entries() const { return masks; }

    /// Whether one of the masks describes `who`. A server is no person: only a mask with a dot in its nick describes one,
    /// such as "*.example.org".
    bool ignores(const ircuser &who, const isupport &rules) const;

private:
    /// Its place, or -1.
    qsizetype find(const QString &mask, const isupport &rules) const;

    QStringList masks;
};
