// SPDX-License-Identifier: MIT
#include "logpainter.h"

#include "readable.h"

#include <QFontMetrics>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace {

constexpr int margin = visiblelines::margin;

/// A tint differs at least so much from what is behind other lines, and text on it is at least so readable (WCAG 2.1, 1.4.3).
constexpr double visibleTint = 1.15;
constexpr double readableText = 4.5;

/// So many hundredths of `colour` in `base`.
QColor mixed(const QColor &base, const QColor &colour, int part)
{
    const auto mix = [part](int from, int to) { return from + (to - from) * part / 100; };
    return {mix(base.red(), colour.red()), mix(base.green(), colour.green()),
            mix(base.blue(), colour.blue())};
}

/// What is behind the lines for us: the highlight's colour, or the text's where a palette highlights with a colour that is
/// nearly the background.
QColor tintOf(const QPalette &palette)
{
    const QColor base = palette.color(QPalette::Active, QPalette::Base);
    const QColor text = palette.color(QPalette::Active, QPalette::Text);
    const QColor highlight = palette.color(QPalette::Active, QPalette::Highlight);
    for (const auto &[colour, part] :
         {std::pair(highlight, 15), {highlight, 30}, {text, 10}, {text, 15}, {highlight, 10}}) {
        const QColor tint = mixed(base, colour, part);
        if (contrast(tint, base) >= visibleTint && contrast(text, tint) >= readableText)
            return tint;
    }
    return mixed(base, text, 10);
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
    format.link = links ? palette.link().color() : QColor();
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
    const bool past = lines.has(line, linestore::past);
    if (lines.has(line, linestore::forUs))
        painter.fillRect(area.adjusted(0, qRound(row.y()), 0, 0), tint);
    if (times && !past) {
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
    painter.setPen(palette.color(past ? QPalette::PlaceholderText : QPalette::Text));
    layout.draw(&painter, area.topLeft(), selections, clip);
}
