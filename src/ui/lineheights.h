// SPDX-License-Identifier: MIT
#pragma once

#include "linestore.h"

#include <deque>
#include <utility>
#include <vector>

/// How high the lines of a log are, in pixels: exact for lines that were laid out, estimated for all others.
///
/// A page of lines is taken as a whole until one of its lines is asked for. So a change of the width costs the
/// number of pages, and pages that are never in view take no memory.
class lineheights
{
public:
    explicit lineheights(const linestore &store) : lines(store) {}

    /// Forgets all heights: rows are `row` pixels high now and hold about `characters`.
    void reset(int row, int characters);
    void set(qint64 line, int height);
    int at(qint64 line);
    /// Whether a height was set since the last reset().
    bool isKnown(qint64 line);
    /// The height of all lines before `line`.
    qint64 above(qint64 line);
    qint64 total() { return above(lines.end()); }
    /// The line that is `y` pixels below the top of the first one, and how much of it is above there.
    std::pair<qint64, int> find(qint64 y);

private:
    struct page
    {
        /// Of its first lines: all that there were when one was asked for. A negative one is estimated.
        std::vector<int> heights;
        qint64 sum = 0;
    };

    /// Removes the heights of lines that were removed, and adds the new pages.
    void follow();
    page &pageOf(qint64 line);
    page &opened(qint64 line);
    qint64 pageHeight(qint64 line);
    int likely(qint64 line) const;

    const linestore &lines;
    std::deque<page> pages;
    qint64 first = 0;
    int rowHeight = 1;
    int rowCharacters = 1;
};
