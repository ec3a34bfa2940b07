// SPDX-License-Identifier: MIT
#include "history.h"

namespace {

constexpr qsizetype maxLines = 200;

} // namespace

void history::add(const QString &line)
{
    place = 0;
    if (line.isEmpty() || line == lines.value(0))
        return;
    lines.prepend(line);
    if (lines.size() > maxLines)
        lines.removeLast();
}

QString history::older(const QString &shown)
{
    if (place == 0)
        unfinished = shown;
    if (place == lines.size())
        return shown;
    return lines.at(place++);
}

QString history::newer(const QString &shown)
{
    if (place == 0)
        return shown;
    --place;
    return place == 0 ? unfinished : lines.at(place - 1);
}
