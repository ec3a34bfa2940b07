// SPDX-License-Identifier: MIT
#pragma once

#include "lineheights.h"
#include "linelayouts.h"
#include "linestore.h"

#include <QRect>

/// Which lines of a log are in view, and where. Only these are laid out; the heights of all others are estimated.
class visiblelines
{
public:
    /// Around the text, in pixels.
    static constexpr int margin = 4;

    /// What is at the upper edge of the view: a line, and how much of it is above the edge. Above the first line
    /// is a margin.
    struct position
    {
        qint64 line = 0;
        int above = 0;

        friend bool operator<(const position &a, const position &b)
        {
            return std::tie(a.line, a.above) < std::tie(b.line, b.above);
        }
    };

    explicit visiblelines(const linestore &store) : lines(store), heights(store), layouts(store) {}

    /// Lays all lines out anew.
    void setFormat(const logformat &format);
    /// The height of the view. Where it is at the bottom, scrollTo(bottom()) keeps it there.
    void setHeight(int pixels) { height = pixels; }

    position top() const { return m_top; }
    /// Whether the view is to stay at the bottom when lines come or its size changes.
    bool isAtBottom() const { return m_atBottom; }
    void setAtBottom() { m_atBottom = true; }
    /// The upper edge `by` pixels below `from`, or above for a negative number. Lines on the way are laid out.
    position moved(position from, int by);
    /// The upper edge where the last line is at the lower one.
    position bottom();
    /// The upper edge that is about `y` pixels below the top of everything.
    position near(qint64 y);
    /// Scrolls to `to`, or as near as there are lines, and returns by how many pixels: negative for upwards, and
    /// at most the height of the view, if nothing stays in view.
    int scrollTo(position to);
    /// Call this when the first lines were removed; false if one of them was in view.
    bool dropGone();

    /// How high everything is, and how far below its top the upper edge is.
    qint64 totalHeight() { return heights.total() + margin + margin; }
    qint64 y() { return heights.above(m_top.line) + m_top.above + margin; }

    const QTextLayout &layoutOf(qint64 line) { return layouts.of(line); }
    /// Call this when all that is in view has been painted. Layouts are large; the next ones are few.
    void forgetLayouts() { layouts.clear(); }
    /// The height of a line, which is laid out if that is not known.
    int heightOf(qint64 line);
    /// The upper edge of a line in the view.
    int topOf(qint64 line);
    /// The line at a height of the view, the nearest where there is none. There must be lines.
    qint64 lineAt(int y);
    /// The place nearest to a point of the view.
    logplace placeAt(const QPoint &point);
    /// The place before the character at a point, if there is one.
    std::optional<logplace> characterAt(const QPoint &point);
    /// The character behind a place.
    QRect rectOf(logplace place);

private:
    int distance(position from, position to);

    const linestore &lines;
    lineheights heights;
    linelayouts layouts;
    int rowHeight = 1;
    int height = 0;
    position m_top{0, -margin};
    bool m_atBottom = true;
};
