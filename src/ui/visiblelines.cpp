// SPDX-License-Identifier: MIT
#include "visiblelines.h"

#include <QFontMetrics>

#include <algorithm>

void visiblelines::setFormat(const logformat &format)
{
    const QFontMetrics metrics(format.font);
    rowHeight = std::max(1, metrics.lineSpacing());
    heights.reset(rowHeight, format.width / std::max(1, metrics.averageCharWidth()));
    layouts.reset(format);
}

int visiblelines::heightOf(qint64 line)
{
    if (heights.isKnown(line))
        return heights.at(line);
    const int pixels = layouts.heightOf(line);
    heights.set(line, pixels);
    return pixels;
}

visiblelines::position visiblelines::moved(position from, int by)
{
    from.above += by;
    while (from.above < 0 && from.line > lines.begin())
        from.above += heightOf(--from.line);
    while (from.line + 1 < lines.end() && from.above >= heightOf(from.line))
        from.above -= heightOf(from.line++);
    if (from.line == lines.begin())
        from.above = std::max(from.above, -margin);
    return from;
}

visiblelines::position visiblelines::bottom()
{
    if (lines.isEmpty())
        return {lines.begin(), -margin};
    const qint64 last = lines.end() - 1;
    return moved({last, heightOf(last) + margin}, -height);
}

visiblelines::position visiblelines::near(qint64 y)
{
    const auto [line, above] = heights.find(y - margin);
    return {line, above};
}

int visiblelines::scrollTo(position to)
{
    // Only near the end can it be too far, and no line is lower than a row.
    m_atBottom = false;
    if (lines.end() - to.line <= height / rowHeight + 1) {
        const position lowest = bottom();
        m_atBottom = !(to < lowest);
        to = std::min(to, lowest);
    }
    const int way = distance(m_top, to);
    m_top = to;
    qint64 line = m_top.line;
    for (int y = -m_top.above; line < lines.end() && y < height; ++line)
        y += heightOf(line);
    layouts.keepOnly(m_top.line, line);
    return way;
}

bool visiblelines::dropGone()
{
    if (m_top.line >= lines.begin())
        return true;
    m_top = {lines.begin(), -margin};
    return false;
}

int visiblelines::distance(position from, position to)
{
    if (to < from)
        return -distance(to, from);
    int way = to.above - from.above;
    for (qint64 line = from.line; line < to.line && way < height; ++line)
        way += heights.at(line);
    return std::min(way, height);
}

int visiblelines::topOf(qint64 line)
{
    int y = -m_top.above;
    for (qint64 next = m_top.line; next < line; ++next)
        y += heights.at(next);
    for (qint64 next = line; next < m_top.line; ++next)
        y -= heights.at(next);
    return y;
}

qint64 visiblelines::lineAt(int y)
{
    qint64 line = m_top.line;
    for (int below = -m_top.above + heights.at(line); line + 1 < lines.end() && below <= y;)
        below += heights.at(++line);
    return line;
}

logplace visiblelines::placeAt(const QPoint &point)
{
    if (lines.isEmpty())
        return {lines.begin(), 0};
    const qint64 line = lineAt(point.y());
    const QTextLayout &layout = layouts.of(line);
    const int y = point.y() - topOf(line);
    int row = 0;
    while (row + 1 < layout.lineCount() && layout.lineAt(row + 1).y() <= y)
        ++row;
    return {line, layout.lineAt(row).xToCursor(point.x())};
}

std::optional<logplace> visiblelines::characterAt(const QPoint &point)
{
    if (lines.isEmpty())
        return {};
    const qint64 line = lineAt(point.y());
    const QTextLayout &layout = layouts.of(line);
    const QPoint inLine = point - QPoint(0, topOf(line));
    for (int i = 0; i < layout.lineCount(); ++i) {
        const QTextLine row = layout.lineAt(i);
        if (row.naturalTextRect().contains(inLine))
            return logplace{line, row.xToCursor(inLine.x(), QTextLine::CursorOnCharacter)};
    }
    return {};
}

QRect visiblelines::rectOf(logplace place)
{
    const QTextLine row = layouts.of(place.line).lineForTextPosition(place.at);
    const qreal x = row.cursorToX(place.at);
    const qreal next = row.cursorToX(place.at + 1);
    const QRectF there(std::min(x, next), row.y(), std::abs(next - x), row.height());
    return there.translated(0, topOf(place.line)).toAlignedRect();
}
