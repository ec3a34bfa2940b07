// SPDX-License-Identifier: MIT
#pragma once

#include "fingerscroll.h"
#include "linkclick.h"

#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QTimer>

class loglayout;

/// A log to read: one paragraph a line, growing at the bottom, where it always is.
///
/// A line's text is in the document when addLine() returns. Layout, scrolling and painting wait for the next
/// frame, once for all lines that came before it: that is when control is back in the event loop or, while
/// lines keep coming, a moment later.
///
/// What the mouse selects is copied, and a click on a web address opens it in the user's browser. A finger
/// scrolls, and taps.
class logview : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit logview(QWidget *parent);
    ~logview() override;

    /// Appends a line of rich text, less the line ends at its end; see richline for what is read of it.
    void addLine(const QString &line);
    void scrollToBottom();
    /// Scrolls by a page, up (-1) or down (1).
    void scrollPage(int direction);
    /// Selects the nearest `text` above what is selected, or below where `newer` says so, whatever its case,
    /// and brings it into view. Begins at the bottom, and goes on at the other end. False when there is none.
    bool findText(const QString &text, bool newer);
    /// The text of the line that the selection begins in.
    QString selectedLine() const;
    /// Opens the web address that the selection begins in, if it does.
    void openSelected() const;

protected:
    void changeEvent(QEvent *event) override;
    /// What was said, as plain text.
    QMimeData *createMimeDataFromSelection() const override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    /// Ends the edit that the lines since the last frame are in, and shows them.
    void settle();
    bool isAtBottom() const;
    /// Takes back what a selection up to the end of the document has grown by.
    void keepSelection();
    QUrl addressAt(const QPoint &point) const;
    static QUrl addressAt(const QTextBlock &line, int position);

    loglayout *log;
    /// Writes at the end of the document, where it stays by itself.
    QTextCursor pen;
    bool empty = true;
    bool editing = false;
    QTimer frame;
    QElapsedTimer sinceFrame;
    /// Where the document ended before the edit, if what the user had selected ended there; else -1.
    int selectedEnd = -1;
    linkclick links;
    fingerscroll fingers;
};
