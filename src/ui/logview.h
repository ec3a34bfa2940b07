// SPDX-License-Identifier: MIT
#pragma once

#include "linestore.h"
#include "loghands.h"
#include "logpainter.h"
#include "logselection.h"
#include "pastline.h"
#include "visiblelines.h"

#include <QAbstractScrollArea>
#include <QElapsedTimer>
#include <QTimer>
#include <QUrl>

class calmbar;
class jumpbutton;

/// A read-only log: one paragraph a line. New lines come at the bottom, and the view scrolls there, unless
/// setKeepsPlace() says otherwise.
///
/// A line is in the store when addLine() returns. Layout, scrolling and painting wait for the next frame, once
/// for all lines that came before it: that is when control is back in the event loop, or some
/// milliseconds later while more lines come. A view that is not seen waits until it is.
class logview : public QAbstractScrollArea
{
    Q_OBJECT

public:
    explicit logview(QWidget *parent);

    /// Appends a line of rich text, less the line ends at its end; see richline for what is read of it. It was
    /// said at `time`, in seconds since 1970 (UTC). One that is marked as for us has a tint.
    void addLine(const QString &line, qint64 time = QDateTime::currentSecsSinceEpoch(),
                 linestore::mark mark = linestore::unmarked);
    /// Appends lines of rich text of an earlier conversation. They are grey, and none of them is new. Call this before
    /// the first addLine().
    void addPast(const QList<pastline> &past);
    void scrollToBottom();
    /// The same, but where the reader's place is kept, it stays.
    void showNewest();
    /// Scrolls by a page, up (-1) or down (1).
    void scrollPage(int direction);
    void scrollBy(int pixels);

    /// Whether the time of each line is shown beside it.
    void setTimes(bool on);
    bool showsTimes() const { return ink.showsTimes(); }
    /// Whether web addresses look like links. Off by default.
    void setShowsLinks(bool on);
    bool showsLinks() const { return ink.showsLinks(); }
    /// So many lines are kept; 0 keeps all.
    void setScrollback(int count);
    /// Whether a reader who has scrolled up stays there when a line comes, with a button that leads back. Off by
    /// default.
    void setKeepsPlace(bool on) { m_keepsPlace = on; }
    bool keepsPlace() const { return m_keepsPlace; }

    /// Selects the nearest `text` above what is selected, or below where `newer` says so, whatever its case,
    /// and brings it into view. Begins at the bottom, and goes on at the other end. False when there is none.
    bool findText(const QString &text, bool newer);
    /// The text of the line that the selection begins in.
    QString selectedLine() const { return store.isEmpty() ? QString() : store.text(selected.start().line); }
    /// Opens the web address that the selection begins in, if it does.
    void openSelected() const;

    const linestore &lines() const { return store; }
    const logselection &selection() const { return selected; }
    void beginSelection(logplace place, logselection::unit by);
    void extendSelection(logplace place);
    void select(logplace from, logplace to);
    void selectAll() { select({store.begin(), 0}, store.endPlace()); }
    /// As plain text, into the clipboard and, where there is one, the primary selection.
    void copy() const { selected.copy(); }

    /// The place nearest to a point of the viewport, and where the character behind a place is there.
    logplace placeAt(const QPoint &point) { return seen.placeAt(point); }
    QRect rectOf(logplace place) { return seen.rectOf(place); }
    /// The web address at a point of the viewport; invalid when there is none.
    QUrl addressAt(const QPoint &point);
    /// The first line that is in view, and the one behind the last.
    std::pair<qint64, qint64> linesInView();
    /// Scrolls as far as it takes to have a place in view.
    void reveal(logplace place);

protected:
    void changeEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void showEvent(QShowEvent *event) override;

private:
    /// Whether the view is on the screen, as far as the system says.
    bool isSeen() const;
    /// Shows the lines since the last frame.
    void showNew();
    /// Removes the first lines, if there are more than the maximum.
    void drop();
    /// Lays all lines out again, because the width, the font or the colours have changed.
    void relayout();
    void scrollTo(visiblelines::position to);
    /// Goes to the bottom if the view was there, and stays where it is if not.
    void stay() { scrollTo(seen.isAtBottom() ? seen.bottom() : seen.moved(seen.top(), 0)); }
    /// Paints the lines again from one to before another.
    void updateLines(qint64 from, qint64 to);
    template <typename Change>
    void changeSelection(Change change);

    calmbar *bar;
    jumpbutton *toBottom;
    linestore store;
    visiblelines seen{store};
    logselection selected{store};
    logpainter ink{store, seen, selected};
    bool m_keepsPlace = false;
    int scrollback = 0;

    /// The lines before this one have been shown, or could have been.
    qint64 shown = 0;
    /// The first line that came when the view had gone to the background; -1 if it never has.
    qint64 unread = -1;
    /// So many lines have come since the reader left the bottom.
    qint64 below = 0;
    bool syncing = false;
    QTimer frame;
    QElapsedTimer sinceFrame;
    int frameMs = 0;
    loghands hands{this};
};
