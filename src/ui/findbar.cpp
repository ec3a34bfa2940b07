// SPDX-License-Identifier: MIT
#include "ui/findbar.h"

#include "platform/box.h"
#include "platform/inputline.h"
#include "ui/logview.h"
#include "ui/readable.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QToolButton>

findbar::findbar(logview *log, QWidget *parent) : QWidget(parent), view(log), field(new inputline(this))
{
    hide();
    field->setPlaceholderText(tr("Find"));
    field->setAccessibleName(tr("Find in this tab"));
    auto *closeButton = new QToolButton(this);
    closeButton->setText(QStringLiteral("\u00d7"));
    closeButton->setAccessibleName(tr("Close the search"));
    connect(closeButton, &QToolButton::clicked, this, &findbar::close);
    auto *row = box<QHBoxLayout>(this);
    row->addWidget(field);
    row->addWidget(closeButton);
}

void findbar::open()
{
    show();
    field->setFocus();
    field->selectAll();
}

void findbar::close()
{
    hide();
    Q_EMIT closed();
}

void findbar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        find(event->modifiers().testFlag(Qt::ShiftModifier));
    else
        QWidget::keyPressEvent(event);
}

void findbar::find(bool newer)
{
    const bool found = view->findText(field->text(), newer);
    QPalette colours = palette();
    if (!found)
        colours.setColor(QPalette::Text, readable(Qt::red, colours.base().color()));
    field->setPalette(colours);
}
