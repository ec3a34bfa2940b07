// SPDX-License-Identifier: MIT
#include "logpainter.h"

#include <QFontMetrics>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int margin = visiblelines::margin;

/// A little of `colour` in `base`.
QColor mixed(const QColor &base, const QColor &colour)
{
    const auto mix = [](int from, int to) { return from + (to - from) * 15 / 100; };
    return {mix(base.red(), colour.red()), mix(base.green(), colour.green()),
            mix(base.blue(), colour.blue())};
}

QColor tintOf(const QPalette &palette)
{
    const QColor base = palette.color(QPalette::Active, QPalette::Base);
    const QColor tint = mixed(base, palette.color(QPalette::Active, QPalette::Highlight));
    // A palette may highlight with a colour that is nearly the background. Text always differs from that.
    const int difference = std::abs(tint.red() - base.red()) + std::abs(tint.green() - base.green()) +
                           std::abs(tint.blue() - base.blue());
    return difference < 20 ? mixed(base, palette.color(QPalette::Active, QPalette::Text)) : tint;
}

} // namespace

logformat logpainter::format(const QFont &font, const QPalette &palette, int width)
{
    column.setFont(font);
    tint = tintOf(palette);
    logformat format;
    format.font = font;
    format.text = palette.text().color();
    format.background = palette.base().color();
    format.tint = tint;
    format.left = margin + (times ? column.width() : 0);
    format.width = std::max(1, width - format.left - margin);
    format.daySpace = times ? QFontMetrics(font).lineSpacing() : 0;
    return format;
}

void logpainter::paint(QPainter &painter, const QPaintEvent &event, const QPalette &palette, int width)
{
    const QRect clip = event.rect();
    QRect area(0, -seen.top().above, width, 0);
    for (qint64 line = seen.top().line; line < lines.end() && area.top() <= clip.bottom(); ++line) {
        area.setHeight(seen.heightOf(line));
        if (event.region().intersects(area))
            paintLine(painter, line, area, clip, palette);
        area.moveTop(area.top() + area.height());
    }
    seen.forgetLayouts();
}

void logpainter::paintLine(QPainter &painter, qint64 line, const QRect &area, const QRect &clip,
                           const QPalette &palette)
{
    const QTextLayout &layout = seen.layoutOf(line);
    const QTextLine row = layout.lineAt(0);
    if (lines.has(line, linestore::forUs))
        painter.fillRect(area.adjusted(0, qRound(row.y()), 0, 0), tint);
    if (times) {
        painter.setPen(palette.color(QPalette::PlaceholderText));
        const QDateTime time = lines.time(line);
        if (lines.has(line, linestore::newDay))
            column.paintDay(painter, time,
                            QRect(margin, area.top(), area.width() - 2 * margin, qRound(row.y())));
        column.paintTime(painter, time, {margin, qRound(area.top() + row.y() + row.ascent())});
    }
    if (line == unread && line > lines.begin()) {
        painter.setPen(palette.color(QPalette::Highlight));
        painter.drawLine(0, area.top(), area.width(), area.top());
    }
    QList<QTextLayout::FormatRange> selections;
    if (const auto [first, behind] = selected.in(line); first < behind) {
        QTextCharFormat look;
        look.setBackground(palette.highlight());
        look.setForeground(palette.highlightedText());
        selections.append({first, behind - first, look});
    }
    painter.setPen(palette.color(QPalette::Text));
    layout.draw(&painter, area.topLeft(), selections, clip);
}
