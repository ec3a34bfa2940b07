// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>

class QDateTime;
class QPainter;
class QRect;

/// The times beside the lines of a log, as hours and minutes, and the date above the first line of a day.
class timecolumn
{
public:
    /// `text` is the font of the lines; that of the times is smaller.
    void setFont(const QFont &text);

    /// In pixels, with what is free on the right.
    int width() const { return m_width; }
    /// Paints the time so that it stands on `baseline`.
    void paintTime(QPainter &painter, const QDateTime &time, const QPoint &baseline) const;
    /// Paints a thin line across `row`, and the date in front of it.
    void paintDay(QPainter &painter, const QDateTime &time, const QRect &row) const;

private:
    QFont font;
    int m_width = 0;
};
