// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QStringList>

#include <utility>

class isupport;

/// The keys of channels (RFC 1459, 4.2.1), kept for the next time that we join, and the JOIN lines with them.
class joinkeys
{
public:
    /// Reads "#a,#b keya,keyb" as a user types it, keeps the keys, and returns the JOIN line.
    QString join(const QString &typed, const isupport &rules);
    /// JOIN lines for `channels` with the keys that are known, of at most 400 bytes each.
    QStringList join(const QStringList &channels, const isupport &rules) const;
    void clear() { keys.clear(); }

private:
    QString keyOf(const QString &channel, const isupport &rules) const;

    /// Channel and key.
    QList<std::pair<QString, QString>> keys;
};
