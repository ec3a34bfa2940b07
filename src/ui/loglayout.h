// SPDX-License-Identifier: MIT
#pragma once

#include "richline.h"

#include <QColor>
#include <QPlainTextDocumentLayout>

#include <limits>
#include <vector>

/// The layout of a log: lines of plain text that only ever grow at the end, and beside them the runs of
/// characters that are coloured, bold, underlined or italic.
///
/// A run becomes a format when its line is laid out, which is when it is about to be seen. So a line costs
/// its text and its runs, and nothing for its looks until someone scrolls to it.
class loglayout : public QPlainTextDocumentLayout
{
    Q_OBJECT

public:
    explicit loglayout(QTextDocument *document);

    /// Lays lines out anew whose colours must be readable on `colour`.
    void setBackground(const QColor &colour);
    /// Tells the looks of a line whose text is about to be written at `position`, in an edit block.
    void addSpans(int position, const std::vector<richspan> &lineSpans);

    QRectF blockBoundingRect(const QTextBlock &block) const override;

protected:
    void documentChanged(int from, int charsRemoved, int charsAdded) override;

private:
    void dress(const QTextBlock &block) const;
    QTextCharFormat formatOf(const richspan &span) const;

    static constexpr int noEdit = std::numeric_limits<int>::max();

    /// In the order of their positions in the document.
    std::vector<richspan> spans;
    /// Where the first line stands whose edit block is not closed yet. It is shown when that is.
    int editStart = noEdit;
    QColor background = Qt::white;
    mutable bool dressing = false;
};
