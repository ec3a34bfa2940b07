// SPDX-License-Identifier: MIT
#pragma once

#include <QStyledItemDelegate>

/// How a row of a member list is drawn: high enough for a finger where fingers are used, and with stripes above the
/// ball for those who do not see its colour, two for an operator and one for a half-operator.
class memberrow : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};
