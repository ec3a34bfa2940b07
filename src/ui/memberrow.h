// SPDX-License-Identifier: MIT
#pragma once

#include <QStyledItemDelegate>

/// Draws a row of a member list. It is high enough for a finger where fingers are used. For those who do not
/// see the colour of the ball there are stripes above it: two for an operator, one for a half-operator.
class memberrow : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};
