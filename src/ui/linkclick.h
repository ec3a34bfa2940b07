// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QUrl>

#include <functional>

/// What the pointer means to the web addresses of a view: over one it is a hand, and a click opens it in the
/// user's browser.
///
/// The address is the one that was pressed on, and opens only if the pointer is still on it when it is
/// released: lines that come between the two may scroll another one there.
class linkclick
{
public:
    /// `at` names the address at a point of the view, as it is on the screen; an invalid one where none is.
    explicit linkclick(std::function<QUrl(const QPoint &)> at) : addressAt(std::move(at)) {}

    /// Call these when the left button or a finger goes down and up; press() before anything may scroll.
    void press(const QPoint &point);
    void release(const QPoint &point);
    /// What was pressed is not opened.
    void cancel() { pressed.clear(); }

    /// The cursor for a pointer that rests at `point`.
    Qt::CursorShape cursorAt(const QPoint &point) const;

private:
    std::function<QUrl(const QPoint &)> addressAt;
    QPoint pressedAt;
    QUrl pressed;
};
