// SPDX-License-Identifier: MIT
#include "joinkeys.h"

#include "isupport.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype maxBytes = 400;
/// CR LF.
constexpr qsizetype lineEndBytes = 2;

QString joinLine(const QStringList &names, const QStringList &keys)
{
    return u"JOIN " + names.join(u',') + (keys.isEmpty() ? QString() : u' ' + keys.join(u','));
}

} // namespace

QString joinkeys::join(const QString &typed, const isupport &rules)
{
    const QStringList names = typed.section(u' ', 0, 0).split(u',', Qt::SkipEmptyParts);
    const QStringList given = typed.section(u' ', 1).trimmed().split(u',', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < given.size() && i < names.size(); ++i) {
        keys.removeIf([&](const auto &known) { return rules.same(known.first, names[i]); });
        keys.append({names[i], given[i]});
    }
    return joinLine(names, given);
}

QStringList joinkeys::join(const QStringList &channels, const isupport &rules) const
{
    // Keys belong to the channels in front, so those that have one come first.
    QStringList sorted = channels;
    std::stable_partition(sorted.begin(), sorted.end(),
                          [&](const QString &c) { return !keyOf(c, rules).isEmpty(); });
    QStringList lines;
    QStringList names;
    QStringList given;
    for (const QString &channel : std::as_const(sorted)) {
        const QString key = keyOf(channel, rules);
        const QStringList more = key.isEmpty() ? given : given + QStringList{key};
        const QString longer = joinLine(names + QStringList{channel}, more);
        if (!names.isEmpty() && longer.toUtf8().size() + lineEndBytes > maxBytes) {
            lines.append(joinLine(names, given));
            names.clear();
            given.clear();
        }
        names.append(channel);
        if (!key.isEmpty())
            given.append(key);
    }
    if (!names.isEmpty())
        lines.append(joinLine(names, given));
    return lines;
}

QString joinkeys::keyOf(const QString &channel, const isupport &rules) const
{
    const auto found = std::find_if(keys.begin(), keys.end(),
                                    [&](const auto &known) { return rules.same(known.first, channel); });
    return found == keys.end() ? QString() : found->second;
}
