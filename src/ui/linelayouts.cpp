// SPDX-License-Identifier: MIT
#include "linelayouts.h"

#include "readable.h"
#include "spanlook.h"
#include "weblink.h"

#include <algorithm>
#include <cmath>

namespace {

/// Qt looks at a word to its end for every row that it fills: over a second for one of 64 KiB. So rows are broken
/// anywhere until no more than so many characters of the word are left.
constexpr qsizetype maxWord = 512;

bool inLongWord(const QString &text, qsizetype place)
{
    const qsizetype space = text.indexOf(u' ', place);
    return (space < 0 ? text.size() : space) - place > maxWord;
}

} // namespace

void linelayouts::reset(const logformat &newFormat)
{
    made.clear();
    format = newFormat;
}

const QTextLayout &linelayouts::of(qint64 line)
{
    if (const auto found = made.find(line); found != made.end())
        return found->second;
    QTextLayout &layout = made.try_emplace(line, lines.text(line), format.font).first->second;
    layout.setFormats(formatsOf(line, layout.text()));
    // The glyphs are needed again to paint them.
    layout.setCacheEnabled(true);
    layOut(layout, lines.has(line, linestore::newDay) ? format.daySpace : 0);
    return layout;
}

int linelayouts::heightOf(qint64 line)
{
    const QTextLayout &layout = of(line);
    const QTextLine last = layout.lineAt(layout.lineCount() - 1);
    return static_cast<int>(std::ceil(last.y() + last.height()));
}

void linelayouts::keepOnly(qint64 from, qint64 to)
{
    made.erase(made.begin(), made.lower_bound(from));
    made.erase(made.upper_bound(to), made.end());
}

void linelayouts::layOut(QTextLayout &layout, int top) const
{
    const QString text = layout.text();
    QTextOption option;
    // A nick in another script must not turn the line around.
    option.setTextDirection(Qt::LeftToRight);
    qreal y = top;
    layout.beginLayout();
    for (qsizetype place = 0;;) {
        option.setWrapMode(inLongWord(text, place) ? QTextOption::WrapAnywhere
                                                   : QTextOption::WrapAtWordBoundaryOrAnywhere);
        layout.setTextOption(option);
        QTextLine row = layout.createLine();
        if (!row.isValid())
            break;
        row.setLeadingIncluded(true);
        row.setLineWidth(format.width);
        row.setPosition({qreal(format.left), y});
        y += row.height();
        place = row.textStart() + row.textLength();
    }
    layout.endLayout();
}

QList<QTextLayout::FormatRange> linelayouts::formatsOf(qint64 line, const QString &text) const
{
    QList<QTextLayout::FormatRange> formats;
    const QColor &background = lines.has(line, linestore::forUs) ? format.tint : format.background;
    const std::vector<richspan> spans = lines.spans(line);
    for (const richspan &span : spans)
        formats.append({span.start, span.length, spanlook(span, format.text, background)});
    if (!format.link.isValid())
        return formats;
    for (const weblinkrange &link : weblinks(text)) {
        // Colours that were chosen for it stay: one of ours may be unreadable on them.
        const bool coloured = std::any_of(spans.begin(), spans.end(), [&link](const richspan &span) {
            return (span.colour != 0 || span.background != 0 || (span.styles & richspan::reverse) != 0) &&
                   span.start < link.start + link.length && link.start < span.start + span.length;
        });
        QTextCharFormat look;
        look.setFontUnderline(true);
        if (!coloured)
            look.setForeground(readable(format.link, background));
        formats.append({static_cast<int>(link.start), static_cast<int>(link.length), look});
    }
    return formats;
}
