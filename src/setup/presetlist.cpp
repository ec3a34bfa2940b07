// SPDX-License-Identifier: MIT
#include "presetlist.h"

#include "fingers.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>
#include <array>

namespace {

/// Pixels around the text of an empty list.
constexpr int margin = 4;

/// High enough for a finger, and with a frame when it has the focus: the frame of Qt's style is hardly
/// visible on a dark desktop.
class presetrow : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const QSize usual = QStyledItemDelegate::sizeHint(option, index);
        return {usual.width(), fingerHeight(usual.height())};
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        if ((option.state & QStyle::State_HasFocus) == 0)
            return;
        painter->setPen(option.palette.highlight().color());
        painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
};

} // namespace

presetlist::presetlist(QWidget *parent) : QListWidget(parent)
{
    setItemDelegate(new presetrow(this));
}

void presetlist::fill(const QStringList &names)
{
    const int row = std::max(currentRow(), 0);
    clear();
    addItems(names);
    setCurrentRow(std::min(row, count() - 1), QItemSelectionModel::NoUpdate);
    setAccessibleDescription(names.isEmpty() ? whatToDo() : QString());
}

QString presetlist::whatToDo()
{
    return tr("Add a server, or use Quick");
}

void presetlist::paintEvent(QPaintEvent *event)
{
    QListWidget::paintEvent(event);
    if (count() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(palette().placeholderText().color());
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignCenter | Qt::TextWordWrap, whatToDo());
}

int presetlist::selectedRow() const
{
    const QList<QListWidgetItem *> selected = selectedItems();
    return selected.isEmpty() ? -1 : row(selected.first());
}

void presetlist::keyPressEvent(QKeyEvent *event)
{
    QListWidget::keyPressEvent(event);
    // Qt selects a row by a key only if the current row changes, which it cannot if there is only one.
    constexpr std::array moves{Qt::Key_Up,  Qt::Key_Down,   Qt::Key_Home,
                               Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown};
    if (std::find(moves.begin(), moves.end(), event->key()) != moves.end())
        setCurrentRow(currentRow());
}
