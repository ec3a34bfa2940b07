// SPDX-License-Identifier: MIT
#include "logview.h"

#include "accessiblelog.h"
#include "calmbar.h"
#include "fingerstyle.h"
#include "jumpbutton.h"
#include "lineend.h"
#include "richline.h"
#include "weblink.h"

#include <QDesktopServices>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QWindow>

#include <algorithm>

namespace {

/// The least time between two frames: where people talk, and where lines come faster than anyone reads.
constexpr int talkMs = 16;
constexpr int floodMs = 40;

} // namespace

logview::logview(QWidget *parent)
    : QAbstractScrollArea(parent), bar(new calmbar(this)), toBottom(new jumpbutton(this))
{
    accessiblelog::install();
    // A click selects, copies or opens; the keyboard stays where the user types.
    setFocusPolicy(Qt::TabFocus);
    setVerticalScrollBar(bar);
    fingerstyle::apply(bar);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setCursor(Qt::IBeamCursor);
    connect(toBottom, &QToolButton::clicked, this, &logview::scrollToBottom);
    frame.setSingleShot(true);
    connect(&frame, &QTimer::timeout, this, &logview::showNew);
    relayout();
}

// --- lines, and when they are shown ---

void logview::addLine(const QString &line, qint64 time, linestore::mark mark)
{
    const richline rich(withoutLineEnd(QStringView(line)));
    store.append(rich.text(), rich.spans(), time, mark);
    drop();
    if (frame.isActive() || !isSeen())
        return;
    const qint64 wait = sinceFrame.isValid() ? frameMs - sinceFrame.elapsed() : 0;
    frame.start(static_cast<int>(std::max<qint64>(wait, 0)));
}

void logview::addPast(const QList<pastline> &past)
{
    const bool allShown = shown == store.end();
    const bool allRead = unread == store.end();
    for (const pastline &line : past) {
        const richline rich(line.text);
        store.append(rich.text(), rich.spans(), line.time, linestore::past);
    }
    drop();
    if (allShown)
        shown = store.end();
    if (allRead)
        ink.setUnread(unread = store.end());
    viewport()->update();
    if (isVisible())
        stay();
}

bool logview::isSeen() const
{
    const QWindow *screen = window()->windowHandle();
    return isVisible() && screen != nullptr && screen->isExposed();
}

void logview::drop()
{
    if (scrollback == 0 || store.end() - store.begin() <= scrollback)
        return;
    const qint64 first = store.end() - scrollback;
    accessiblelog::tellGone(*this, first);
    store.keepLast(scrollback);
    if (!seen.dropGone())
        viewport()->update();
}

void logview::showNew()
{
    frame.stop();
    if (shown == store.end() || !isSeen())
        return;
    const qint64 first = std::max(std::exchange(shown, store.end()), store.begin());
    sinceFrame.start();
    frameMs = (shown - first) * fontMetrics().lineSpacing() > viewport()->height() ? floodMs : talkMs;
    const bool stays = m_keepsPlace && !seen.isAtBottom();
    below = stays ? below + shown - first : 0;
    scrollTo(stays ? seen.top() : seen.bottom());
    updateLines(first, shown);
    accessiblelog::tellNew(*this, first);
}

void logview::setScrollback(int count)
{
    scrollback = count;
    drop();
}

void logview::showEvent(QShowEvent *event)
{
    QAbstractScrollArea::showEvent(event);
    // Nothing came: what comes now is read at once.
    if (!event->spontaneous() && unread == store.end())
        ink.setUnread(-1);
    stay();
    showNew();
}

void logview::hideEvent(QHideEvent *event)
{
    QAbstractScrollArea::hideEvent(event);
    if (!event->spontaneous())
        ink.setUnread(unread = store.end());
}

// --- where the view is ---

void logview::relayout()
{
    seen.setFormat(ink.format(font(), palette(), viewport()->width()));
    seen.setHeight(viewport()->height());
    bar->setSingleStep(fontMetrics().lineSpacing());
    viewport()->update();
    if (isVisible())
        stay();
}

void logview::scrollTo(visiblelines::position to)
{
    // The pixels that stay in view are moved, and only the others are painted.
    const int height = viewport()->height();
    const int way = seen.scrollTo(to);
    if (std::abs(way) < height)
        viewport()->scroll(0, -way, viewport()->rect());
    else
        viewport()->update();
    const QScopedValueRollback guard(syncing, true);
    bar->set(seen.totalHeight() - height, height, seen.y());
    if (seen.isAtBottom())
        below = 0;
    toBottom->offer(below, viewport()->geometry());
}

void logview::scrollContentsBy(int /*dx*/, int dy)
{
    if (syncing)
        return;
    if (bar->value() == bar->maximum())
        return scrollTo(seen.bottom());
    // A short way is taken by the pixel, a long one as far as the heights of the lines are known.
    if (std::abs(dy) < 2 * viewport()->height())
        return scrollBy(-dy);
    viewport()->update();
    scrollTo(seen.moved(seen.near(bar->value()), 0));
}

void logview::scrollBy(int pixels)
{
    scrollTo(seen.moved(seen.top(), pixels));
}

void logview::scrollPage(int direction)
{
    showNew();
    bar->triggerAction(direction < 0 ? QScrollBar::SliderPageStepSub : QScrollBar::SliderPageStepAdd);
}

void logview::scrollToBottom()
{
    if (!isVisible())
        return seen.setAtBottom();
    scrollTo(seen.bottom());
    showNew();
}

void logview::showNewest()
{
    if (!m_keepsPlace)
        scrollToBottom();
}

void logview::reveal(logplace place)
{
    const QRect there = rectOf(place);
    if (there.top() < 0 || there.bottom() >= viewport()->height())
        scrollTo(seen.moved({place.line, 0}, -viewport()->height() / 2));
}

void logview::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    seen.setHeight(viewport()->height());
    if (event->oldSize().width() != event->size().width())
        relayout();
    else if (isVisible())
        stay();
}

void logview::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange ||
        event->type() == QEvent::StyleChange)
        relayout();
}

void logview::setTimes(bool on)
{
    ink.setTimes(on);
    relayout();
}

void logview::setShowsLinks(bool on)
{
    if (on == ink.showsLinks())
        return;
    ink.setLinks(on);
    relayout();
}

// --- painting ---

void logview::paintEvent(QPaintEvent *event)
{
    // Lines that came while the window was minimized wait for this.
    if (shown != store.end() && !frame.isActive())
        frame.start(0);
    QPainter painter(viewport());
    ink.paint(painter, *event, palette(), viewport()->width());
}

void logview::updateLines(qint64 from, qint64 to)
{
    from = std::max(from, seen.top().line);
    if (from >= to)
        return;
    const int height = viewport()->height();
    int y = seen.topOf(from);
    const int start = y;
    for (; from < to && y < height; ++from)
        y += seen.heightOf(from);
    viewport()->update(0, start, viewport()->width(), y - start);
}

// --- what is selected, found and opened ---

template <typename Change>
void logview::changeSelection(Change change)
{
    const logplace start = selected.start();
    const logplace end = selected.end();
    change();
    const auto update = [this](logplace a, logplace b) {
        if (a != b)
            updateLines(std::min(a, b).line, std::max(a, b).line + 1);
    };
    update(start, selected.start());
    update(end, selected.end());
    accessiblelog::tellSelected(*this);
}

void logview::beginSelection(logplace place, logselection::unit by)
{
    changeSelection([&] { selected.begin(place, by); });
}

void logview::extendSelection(logplace place)
{
    changeSelection([&] { selected.extendTo(place); });
}

void logview::select(logplace from, logplace to)
{
    changeSelection([&] { selected.select(from, to); });
}

bool logview::findText(const QString &text, bool newer)
{
    showNew();
    const std::optional<logplace> found = selected.find(text, newer);
    if (!found)
        return false;
    select(*found, {found->line, found->at + static_cast<int>(text.size())});
    reveal(*found);
    return true;
}

QUrl logview::addressAt(const QPoint &point)
{
    const std::optional<logplace> there = seen.characterAt(point);
    return there ? weblink(store.text(there->line), there->at) : QUrl();
}

std::pair<qint64, qint64> logview::linesInView()
{
    showNew();
    if (store.isEmpty())
        return {store.begin(), store.end()};
    return {seen.top().line, seen.lineAt(viewport()->height()) + 1};
}

void logview::openSelected() const
{
    const QUrl address = selected.isEmpty() ? QUrl() : weblink(selectedLine(), selected.start().at);
    if (address.isValid())
        QDesktopServices::openUrl(address);
}

void logview::keyPressEvent(QKeyEvent *event)
{
    showNew();
    if (event == QKeySequence::Copy)
        copy();
    else if (event == QKeySequence::SelectAll)
        selectAll();
    else if (event->key() == Qt::Key_Home)
        bar->triggerAction(QScrollBar::SliderToMinimum);
    else if (event->key() == Qt::Key_End)
        bar->triggerAction(QScrollBar::SliderToMaximum);
    else
        QAbstractScrollArea::keyPressEvent(event);
}
