// SPDX-License-Identifier: MIT
#pragma once

#include "logselection.h"
#include "timecolumn.h"
#include "visiblelines.h"

#include <QPalette>

class QPaintEvent;
class QPainter;

/// Paints what is in view of a log: the lines, what is selected of them, their times, and what has been read.
class logpainter
{
public:
    logpainter(const linestore &store, visiblelines &visible, const logselection &selection)
        : lines(store), seen(visible), selected(selection)
    {
    }

    /// Whether the time of each line is shown beside it.
    void setTimes(bool on) { times = on; }
    bool showsTimes() const { return times; }
    /// Whether web addresses look like links.
    void setLinks(bool on) { links = on; }
    bool showsLinks() const { return links; }
    /// Above this line is a thin line, if there is a line before it.
    void setUnread(qint64 line) { unread = line; }
    /// How lines are laid out with this font in a viewport of this width, in pixels.
    logformat format(const QFont &font, const QPalette &palette, int width);
    /// Paints the part of a viewport that an event asks for.
    void paint(QPainter &painter, const QPaintEvent &event, const QPalette &palette, int width);

private:
    void paintLine(QPainter &painter, qint64 line, const QRect &area, const QRect &clip,
                   const QPalette &palette);

    const linestore &lines;
    visiblelines &seen;
    const logselection &selected;
    timecolumn column;
    QColor tint;
    bool times = false;
    bool links = false;
    qint64 unread = -1;
};
