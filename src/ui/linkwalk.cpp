// SPDX-License-Identifier: MIT
#include "linkwalk.h"

#include "logview.h"
#include "weblink.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QKeyEvent>

#include <algorithm>

linkwalk::linkwalk(logview *log) : QObject(log), view(log)
{
    view->installEventFilter(this);
}

std::vector<linkwalk::stretch> linkwalk::inView() const
{
    std::vector<stretch> all;
    const auto [from, to] = view->linesInView();
    const auto seen = [this](logplace place) {
        return view->viewport()->rect().contains(view->rectOf(place).center());
    };
    for (qint64 line = from; line < to; ++line) {
        for (const weblinkrange &link : weblinks(view->lines().text(line))) {
            const int start = static_cast<int>(link.start);
            const int end = static_cast<int>(link.start + link.length);
            if (seen({line, start}) || seen({line, end - 1}))
                all.push_back({{line, start}, {line, end}});
        }
    }
    return all;
}

bool linkwalk::isAt() const
{
    return walking && view->selection().start() == current.first && view->selection().end() == current.second;
}

void linkwalk::step(bool newer)
{
    const std::vector<stretch> all = inView();
    if (all.empty())
        return;
    const bool first = !isAt();
    // The place where the walk is may have gone out of view.
    const auto behind = std::upper_bound(all.begin(), all.end(), current);
    const auto here = std::lower_bound(all.begin(), all.end(), current);
    if (newer && !first)
        current = behind == all.end() ? all.front() : *behind;
    else
        current = first || here == all.begin() ? all.back() : *(here - 1);
    walking = true;
    view->setFocus(Qt::ShortcutFocusReason);
    view->select(current.first, current.second);
}

void linkwalk::leave()
{
    if (isAt())
        view->select({}, {});
    walking = false;
}

bool linkwalk::press(int key)
{
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
        step(key == Qt::Key_Down);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        view->openSelected();
        return true;
    case Qt::Key_Escape:
        leave();
        Q_EMIT left();
        return true;
    default:
        return false;
    }
}

bool linkwalk::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && isAt() && press(static_cast<QKeyEvent *>(event)->key()))
        return true;
    if (event->type() == QEvent::ContextMenu && isAt()) {
        const QPoint here = view->rectOf(current.first).center();
        QContextMenuEvent onLink(QContextMenuEvent::Keyboard, here, view->viewport()->mapToGlobal(here));
        return QCoreApplication::sendEvent(view->viewport(), &onLink);
    }
    if (event->type() == QEvent::FocusOut) {
        const auto why = static_cast<QFocusEvent *>(event)->reason();
        // A menu or another window gives the focus back.
        if (why != Qt::PopupFocusReason && why != Qt::ActiveWindowFocusReason)
            leave();
    }
    return QObject::eventFilter(watched, event);
}
