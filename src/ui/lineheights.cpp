// SPDX-License-Identifier: MIT
#include "lineheights.h"

#include <algorithm>
#include <cstdlib>

void lineheights::reset(int row, int characters)
{
    rowHeight = std::max(row, 1);
    rowCharacters = std::max(characters, 1);
    for (page &p : pages)
        p = {};
}

void lineheights::follow()
{
    for (; first < lines.begin(); ++first) {
        if (pages.empty())
            continue;
        page &p = pages.front();
        if (const auto place = static_cast<size_t>(first % linestore::pageLines); place < p.heights.size())
            p.sum -= std::abs(std::exchange(p.heights[place], 0));
        if ((first + 1) % linestore::pageLines == 0)
            pages.pop_front();
    }
    const qint64 pageOfEnd = (lines.end() + linestore::pageLines - 1) / linestore::pageLines;
    pages.resize(static_cast<size_t>(std::max<qint64>(0, pageOfEnd - first / linestore::pageLines)));
}

lineheights::page &lineheights::pageOf(qint64 line)
{
    return pages[static_cast<size_t>(line / linestore::pageLines - first / linestore::pageLines)];
}

lineheights::page &lineheights::opened(qint64 line)
{
    page &p = pageOf(line);
    const qint64 start = line - line % linestore::pageLines;
    const qint64 stop = std::min(start + linestore::pageLines, lines.end());
    for (qint64 next = start + static_cast<qint64>(p.heights.size()); next < stop; ++next) {
        const int height = next < first ? 0 : likely(next);
        p.heights.push_back(-height);
        p.sum += height;
    }
    return p;
}

int lineheights::likely(qint64 line) const
{
    return rowHeight * (1 + std::max(0, lines.length(line) - 1) / rowCharacters);
}

qint64 lineheights::pageHeight(qint64 line)
{
    if (!pageOf(line).heights.empty())
        return opened(line).sum;
    // The last row of a line is half full, more or less.
    const qint64 start = std::max(line - line % linestore::pageLines, first);
    const qint64 stop = std::min(line - line % linestore::pageLines + linestore::pageLines, lines.end());
    const qint64 rows = lines.pageCharacters(line) / rowCharacters + (stop - start) / 2;
    return rowHeight * std::max(rows, stop - start);
}

void lineheights::set(qint64 line, int height)
{
    follow();
    page &p = opened(line);
    int &old = p.heights[static_cast<size_t>(line % linestore::pageLines)];
    p.sum += height - std::abs(std::exchange(old, height));
}

int lineheights::at(qint64 line)
{
    follow();
    return std::abs(opened(line).heights[static_cast<size_t>(line % linestore::pageLines)]);
}

bool lineheights::isKnown(qint64 line)
{
    follow();
    const auto &heights = pageOf(line).heights;
    const auto place = static_cast<size_t>(line % linestore::pageLines);
    return place < heights.size() && heights[place] > 0;
}

qint64 lineheights::above(qint64 line)
{
    follow();
    qint64 sum = 0;
    qint64 next = first;
    for (; next / linestore::pageLines < line / linestore::pageLines;
         next += linestore::pageLines - next % linestore::pageLines)
        sum += pageHeight(next);
    if (next < line) {
        const auto &heights = opened(next).heights;
        for (; next < line; ++next)
            sum += std::abs(heights[static_cast<size_t>(next % linestore::pageLines)]);
    }
    return sum;
}

std::pair<qint64, int> lineheights::find(qint64 y)
{
    follow();
    qint64 line = first;
    while (line + linestore::pageLines < lines.end() && y >= pageHeight(line)) {
        y -= pageHeight(line);
        line += linestore::pageLines - line % linestore::pageLines;
    }
    while (line + 1 < lines.end() && y >= at(line))
        y -= at(line++);
    return {line, static_cast<int>(y)};
}
