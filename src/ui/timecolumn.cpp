// SPDX-License-Identifier: MIT
#include "timecolumn.h"

#include <QDateTime>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr double smaller = 0.85;

QString dateOf(const QDateTime &time)
{
    return QLocale::c().toString(time.date(), u"d MMM"_s);
}

} // namespace

void timecolumn::setFont(const QFont &text)
{
    font = text;
    if (text.pointSizeF() > 0)
        font.setPointSizeF(text.pointSizeF() * smaller);
    else
        font.setPixelSize(std::max(1, qRound(text.pixelSize() * smaller)));
    const QFontMetrics metrics(font);
    m_width = std::max(metrics.horizontalAdvance(u"00:00"_s), metrics.horizontalAdvance(u"30 Nov"_s)) +
              metrics.averageCharWidth();
}

void timecolumn::paintTime(QPainter &painter, const QDateTime &time, const QPoint &baseline) const
{
    painter.setFont(font);
    painter.drawText(baseline, time.toString(u"HH:mm"_s));
}

void timecolumn::paintDay(QPainter &painter, const QDateTime &time, const QRect &row) const
{
    painter.setFont(font);
    painter.drawText(row, Qt::AlignLeft | Qt::AlignVCenter, dateOf(time));
    const int y = row.center().y();
    painter.drawLine(row.left() + m_width, y, row.right(), y);
}
