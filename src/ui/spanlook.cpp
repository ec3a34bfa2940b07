// SPDX-License-Identifier: MIT
#include "spanlook.h"

#include "readable.h"

#include <utility>

QTextCharFormat spanlook(const richspan &span, const QColor &text, const QColor &background)
{
    const auto has = [&span](richspan::style s) { return (span.styles & s) != 0; };
    QColor back = background;
    QColor colour = text;
    if (span.background != 0) {
        back = QColor::fromRgb(span.background);
        // The log's own text colour may be a light one, and unreadable there.
        colour = Qt::black;
    }
    if (span.colour != 0)
        colour = QColor::fromRgb(span.colour);
    if (colour != text)
        colour = readable(colour, back);
    if (has(richspan::reverse))
        std::swap(colour, back);

    QTextCharFormat look;
    if (colour != text)
        look.setForeground(colour);
    if (back != background)
        look.setBackground(back);
    if (has(richspan::bold))
        look.setFontWeight(QFont::Bold);
    if (has(richspan::underline))
        look.setFontUnderline(true);
    if (has(richspan::italic))
        look.setFontItalic(true);
    if (has(richspan::strike))
        look.setFontStrikeOut(true);
    return look;
}
