// SPDX-License-Identifier: MIT
#include "logview.h"

#include "fingerstyle.h"
#include "lineend.h"
#include "loglayout.h"
#include "richline.h"
#include "weblink.h"

#include <QDesktopServices>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocumentFragment>

#include <algorithm>

namespace {

/// While lines keep coming, the view is laid out and painted once in so many milliseconds.
constexpr int frameMs = 40;

} // namespace

logview::logview(QWidget *parent)
    : QPlainTextEdit(parent), links([this](const QPoint &point) { return addressAt(point); }), fingers(this)
{
    auto *document = new QTextDocument(this);
    document->setUndoRedoEnabled(false);
    log = new loglayout(document);
    document->setDocumentLayout(log);
    setDocument(document);
    pen = QTextCursor(document);
    setReadOnly(true);
    // A click selects, copies or opens; the keyboard stays where the user types.
    setFocusPolicy(Qt::TabFocus);
    fingerstyle::apply(verticalScrollBar());
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    log->setBackground(palette().base().color());
    viewport()->setMouseTracking(true);
    frame.setSingleShot(true);
    // What nobody sees is not laid out: with many tabs that would take long.
    connect(&frame, &QTimer::timeout, this, [this] {
        if (isVisible())
            settle();
    });
}

logview::~logview()
{
    if (editing)
        pen.endEditBlock();
}

void logview::addLine(const QString &line)
{
    if (!editing) {
        editing = true;
        const QTextCursor own = textCursor();
        selectedEnd = own.hasSelection() && own.selectionEnd() == pen.position() ? pen.position() : -1;
        pen.beginEditBlock();
        const qint64 wait = sinceFrame.isValid() ? frameMs - sinceFrame.elapsed() : 0;
        frame.start(static_cast<int>(std::max<qint64>(wait, 0)));
    }
    const richline rich(withoutLineEnd(QStringView(line)));
    // The format is said: otherwise it would be that of wherever the user's own cursor has been.
    if (!empty)
        pen.insertBlock(QTextBlockFormat(), QTextCharFormat());
    empty = false;
    log->addSpans(pen.position(), rich.spans());
    pen.insertText(rich.text(), QTextCharFormat());
}

bool logview::isAtBottom() const
{
    return verticalScrollBar()->value() == verticalScrollBar()->maximum();
}

void logview::settle()
{
    if (editing)
        scrollToBottom();
}

void logview::scrollToBottom()
{
    if (editing) {
        editing = false;
        pen.endEditBlock();
        keepSelection();
        frame.stop();
        sinceFrame.start();
    }
    // Lines are laid out when they come into view and may turn out taller than they were taken for: the
    // bottom moves while we go there, and the number of the bottom may stand for another line than it did
    // before.
    QScrollBar *bar = verticalScrollBar();
    bar->setValue(0);
    do
        bar->setValue(bar->maximum());
    while (bar->value() != bar->maximum());
}

void logview::keepSelection()
{
    QTextCursor own = textCursor();
    if (selectedEnd < 0 || own.selectionEnd() != pen.position())
        return;
    const int position = std::min(own.position(), selectedEnd);
    own.setPosition(std::min(own.anchor(), selectedEnd));
    own.setPosition(position, QTextCursor::KeepAnchor);
    setTextCursor(own);
}

QMimeData *logview::createMimeDataFromSelection() const
{
    auto *copied = new QMimeData;
    copied->setText(textCursor().selection().toPlainText().remove(richline::breakHere));
    return copied;
}

void logview::showEvent(QShowEvent *event)
{
    QPlainTextEdit::showEvent(event);
    settle();
}

void logview::resizeEvent(QResizeEvent *event)
{
    const bool atBottom = isAtBottom();
    QPlainTextEdit::resizeEvent(event);
    if (atBottom)
        scrollToBottom();
}

void logview::scrollPage(int direction)
{
    settle();
    verticalScrollBar()->triggerAction(direction < 0 ? QScrollBar::SliderPageStepSub
                                                     : QScrollBar::SliderPageStepAdd);
}

bool logview::findText(const QString &text, bool newer)
{
    settle();
    QTextCursor from = textCursor();
    if (!from.hasSelection())
        from.movePosition(QTextCursor::End);
    const auto direction = newer ? QTextDocument::FindFlags() : QTextDocument::FindBackward;
    QTextCursor found = document()->find(text, from, direction);
    if (found.isNull()) {
        from.movePosition(newer ? QTextCursor::Start : QTextCursor::End);
        found = document()->find(text, from, direction);
    }
    if (found.isNull())
        return false;
    setTextCursor(found);
    return true;
}

QString logview::selectedLine() const
{
    const QString line = document()->findBlock(textCursor().selectionStart()).text();
    return QString(line).remove(richline::breakHere);
}

void logview::changeEvent(QEvent *event)
{
    settle();
    const bool atBottom = isAtBottom();
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        log->setBackground(palette().base().color());
    if (event->type() == QEvent::FontChange && atBottom)
        scrollToBottom();
}

void logview::keyPressEvent(QKeyEvent *event)
{
    settle();
    QPlainTextEdit::keyPressEvent(event);
}

void logview::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        links.press(event->position().toPoint());
    settle();
    if (fingerscroll::isFinger(*event))
        return;
    // A press inside of a selection could begin to drag it, unless it extends it, which Shift alone does. A
    // drag runs an event loop of its own, in which the server may close this tab; and the text can be pasted
    // anyway.
    QTextCursor own = textCursor();
    const bool extends = event->modifiers() == Qt::ShiftModifier;
    if (event->button() == Qt::LeftButton && own.hasSelection() && !extends) {
        own.clearSelection();
        setTextCursor(own);
    }
    QPlainTextEdit::mousePressEvent(event);
}

void logview::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (!fingerscroll::isFinger(*event))
        QPlainTextEdit::mouseDoubleClickEvent(event);
}

void logview::mouseMoveEvent(QMouseEvent *event)
{
    if (fingerscroll::isFinger(*event))
        return;
    QPlainTextEdit::mouseMoveEvent(event);
    const bool rests = event->buttons() == Qt::NoButton;
    viewport()->setCursor(rests ? links.cursorAt(event->position().toPoint()) : Qt::IBeamCursor);
}

void logview::mouseReleaseEvent(QMouseEvent *event)
{
    const bool finger = fingerscroll::isFinger(*event);
    if (!finger)
        QPlainTextEdit::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton)
        return;
    if (textCursor().hasSelection() && !finger)
        return copy();
    links.release(event->position().toPoint());
}

void logview::wheelEvent(QWheelEvent *event)
{
    // With Ctrl it would change the size of the text, which is the same in all views, in this one alone.
    if (event->modifiers().testFlag(Qt::ControlModifier))
        event->ignore();
    else
        QPlainTextEdit::wheelEvent(event);
}

bool logview::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ScrollPrepare)
        settle();
    // The scroll bar of a QPlainTextEdit counts lines.
    const qreal height = QFontMetricsF(document()->defaultFont()).lineSpacing();
    return fingers.scroll(event, height) || QPlainTextEdit::viewportEvent(event);
}

QUrl logview::addressAt(const QPoint &point) const
{
    const QTextCursor nearest = cursorForPosition(point);
    // Beside the end of a line the nearest character is still that line's last.
    const QRect place = cursorRect(nearest);
    const int reach = 2 * fontMetrics().averageCharWidth();
    if (!place.adjusted(-reach, 0, reach, 0).contains(point))
        return {};
    // The nearest gap between two characters may be either side of the one that was hit.
    return addressAt(nearest.block(), nearest.positionInBlock() - (point.x() < place.center().x() ? 1 : 0));
}

QUrl logview::addressAt(const QTextBlock &line, int position)
{
    if (position < 0)
        return {};
    // What stands there for the layout alone is no part of the address.
    const QString text = line.text();
    const qsizetype inserted = QStringView(text).first(position).count(richline::breakHere);
    return weblink(QString(text).remove(richline::breakHere), position - inserted);
}

void logview::openSelected() const
{
    const QTextBlock line = document()->findBlock(textCursor().selectionStart());
    const QUrl address = addressAt(line, textCursor().selectionStart() - line.position());
    if (textCursor().hasSelection() && address.isValid())
        QDesktopServices::openUrl(address);
}
