// SPDX-License-Identifier: MIT
#include "loglayout.h"

#include "readable.h"

#include <QFontMetricsF>
#include <QScopedValueRollback>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>

loglayout::loglayout(QTextDocument *document) : QPlainTextDocumentLayout(document) {}

void loglayout::setBackground(const QColor &colour)
{
    if (colour == background)
        return;
    background = colour;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
        block.clearLayout();
    Q_EMIT update();
}

void loglayout::addSpans(int position, const std::vector<richspan> &lineSpans)
{
    editStart = std::min(editStart, position);
    for (richspan span : lineSpans) {
        span.start += position;
        spans.push_back(span);
    }
}

QRectF loglayout::blockBoundingRect(const QTextBlock &block) const
{
    if (!block.isValid() || block.layout()->lineCount() > 0)
        return QPlainTextDocumentLayout::blockBoundingRect(block);
    // Whoever paints in the middle of an edit meets lines that Qt's layout has not been told of yet. It would
    // lose count of its widest line, and make an object of 1 KiB for every line there is to find it again.
    if (block.position() >= editStart)
        return {0, 0, 0, QFontMetricsF(document()->defaultFont()).lineSpacing()};
    dress(block);
    return QPlainTextDocumentLayout::blockBoundingRect(block);
}

void loglayout::documentChanged(int from, int charsRemoved, int charsAdded)
{
    if (dressing)
        return;
    editStart = noEdit;
    // The first line goes into the block that an empty document has, which may be laid out already.
    document()->findBlock(from).clearLayout();
    QPlainTextDocumentLayout::documentChanged(from, charsRemoved, charsAdded);
}

void loglayout::dress(const QTextBlock &block) const
{
    const int start = block.position();
    const int end = start + block.length();
    auto span = std::lower_bound(spans.begin(), spans.end(), start,
                                 [](const richspan &s, int position) { return s.start < position; });
    QList<QTextLayout::FormatRange> formats;
    for (; span != spans.end() && span->start < end; ++span)
        formats.append({span->start - start, span->length, formatOf(*span)});
    if (formats.isEmpty())
        return;
    // setFormats() leaves word in the document that this line has changed, and the next append would lay out
    // everything from here to the end for it. Calling for the change at once, and not listening, clears that.
    // But while an edit block is open, its own changes are under way with that word and must not be lost.
    const QScopedValueRollback quiet(dressing, true);
    block.layout()->setFormats(formats);
    if (editStart == noEdit)
        document()->markContentsDirty(start, block.length());
}

QTextCharFormat loglayout::formatOf(const richspan &span) const
{
    QTextCharFormat format;
    if (span.colour != 0)
        format.setForeground(readable(QColor::fromRgb(span.colour), background));
    if ((span.styles & richspan::bold) != 0)
        format.setFontWeight(QFont::Bold);
    if ((span.styles & richspan::underline) != 0)
        format.setFontUnderline(true);
    if ((span.styles & richspan::italic) != 0)
        format.setFontItalic(true);
    return format;
}
