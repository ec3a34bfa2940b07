// SPDX-License-Identifier: MIT
#include "memberrow.h"

#include "fingers.h"
#include "rostermodel.h"

#include <QApplication>
#include <QPainter>

namespace {

/// The number of stripes for a rank.
int stripesOf(isupport::rank rank)
{
    if (rank == isupport::rank::op)
        return 2;
    return rank == isupport::rank::halfop ? 1 : 0;
}

} // namespace

void memberrow::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    const int stripes = stripesOf(static_cast<isupport::rank>(index.data(rostermodel::RankRole).toInt()));
    if (stripes == 0)
        return;
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    const QStyle *style = row.widget != nullptr ? row.widget->style() : QApplication::style();
    const QRect room = style->subElementRect(QStyle::SE_ItemViewItemDecoration, &row, row.widget);
    const QRect ball = QStyle::alignedRect(row.direction, row.decorationAlignment, row.decorationSize, room);
    const bool selected = row.state.testFlag(QStyle::State_Selected);
    const QColor ink = row.palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
    // The three rows of pixels above the ball are empty.
    for (int i = 0; i < stripes; ++i)
        painter->fillRect(ball.left() + 1, ball.top() + 1 - 2 * i, 5, 1, ink);
}

QSize memberrow::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QSize usual = QStyledItemDelegate::sizeHint(option, index);
    return {usual.width(), fingerHeight(usual.height())};
}
