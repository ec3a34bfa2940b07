// SPDX-License-Identifier: MIT
#include "logselection.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTextBoundaryFinder>

#include <algorithm>

void logselection::begin(logplace place, unit u)
{
    by = u;
    origin = unitAt(place);
    std::tie(from, to) = origin;
}

void logselection::extendTo(logplace place)
{
    const auto [first, last] = unitAt(place);
    from = std::min(origin.first, first);
    to = std::max(origin.second, last);
}

void logselection::select(logplace first, logplace last)
{
    by = unit::character;
    origin = {first, first};
    from = first;
    to = last;
}

std::pair<int, int> logselection::in(qint64 line) const
{
    const logplace first = start();
    const logplace last = end();
    if (line < first.line || line > last.line)
        return {0, 0};
    return {line == first.line ? first.at : 0, line == last.line ? last.at : lines.length(line)};
}

std::optional<logplace> logselection::find(const QString &sought, bool newer) const
{
    if (sought.isEmpty())
        return {};
    const logplace far = newer ? logplace{lines.begin(), 0} : lines.endPlace();
    const logplace near = isEmpty() ? lines.endPlace() : newer ? end() : start();
    const std::optional<logplace> found = lines.find(sought, near, newer);
    return found || near == far ? found : lines.find(sought, far, newer);
}

void logselection::copy() const
{
    if (isEmpty())
        return;
    QClipboard *clipboard = QGuiApplication::clipboard();
    const QString all = text();
    clipboard->setText(all);
    if (clipboard->supportsSelection())
        clipboard->setText(all, QClipboard::Selection);
}

std::pair<logplace, logplace> logselection::unitAt(logplace place) const
{
    if (by == unit::character || place.line < lines.begin() || place.line >= lines.end())
        return {place, place};
    const int length = lines.length(place.line);
    if (by == unit::line)
        return {{place.line, 0}, {place.line, length}};
    QTextBoundaryFinder words(QTextBoundaryFinder::Word, lines.text(place.line));
    words.setPosition(place.at);
    const auto start = words.isAtBoundary() && place.at < length ? place.at : words.toPreviousBoundary();
    words.setPosition(place.at);
    const auto stop = place.at < length ? words.toNextBoundary() : length;
    return {{place.line, static_cast<int>(std::max<qsizetype>(start, 0))},
            {place.line, static_cast<int>(stop)}};
}
