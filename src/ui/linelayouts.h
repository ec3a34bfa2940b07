// SPDX-License-Identifier: MIT
#pragma once

#include "linestore.h"

#include <QColor>
#include <QFont>
#include <QTextLayout>

#include <map>

/// How lines are laid out.
struct logformat
{
    QFont font;
    QColor text = Qt::black;
    /// Behind the text, on which it must be readable: behind most lines, and behind those for us.
    QColor background = Qt::white;
    QColor tint = Qt::white;
    /// What web addresses look like; invalid where they look like any text.
    QColor link;
    /// Where rows begin, and how wide they are, in pixels.
    int left = 0;
    int width = 1;
    /// So many pixels are left free above the first line of a day.
    int daySpace = 0;
};

/// The layouts of the lines of a log that are in view: their rows, glyphs and colours. They are made when they
/// are asked for, and are the only part of a line that is large.
class linelayouts
{
public:
    explicit linelayouts(const linestore &store) : lines(store) {}

    /// Forgets all layouts, which are made as `format` says now.
    void reset(const logformat &format);
    /// The layout of a line, in a rectangle that is as wide as the view.
    const QTextLayout &of(qint64 line);
    int heightOf(qint64 line);
    /// Forgets the layouts of all other lines.
    void keepOnly(qint64 from, qint64 to);
    void clear() { made.clear(); }

private:
    void layOut(QTextLayout &layout, int top) const;
    QList<QTextLayout::FormatRange> formatsOf(qint64 line, const QString &text) const;

    const linestore &lines;
    std::map<qint64, QTextLayout> made;
    logformat format;
};
