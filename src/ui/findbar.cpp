// SPDX-License-Identifier: MIT
#include "findbar.h"

#include "box.h"
#include "fingers.h"
#include "inputline.h"
#include "logview.h"
#include "readable.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QShortcut>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

/// Searching for a longer text would take long in lines that a stranger has written for that purpose.
constexpr int maxSought = 128;
/// The maximum of a found line that a screen reader gets.
constexpr int maxAnnounced = 512;

} // namespace

findbar::findbar(logview *log, QWidget *parent) : QWidget(parent), view(log), field(new inputline(this))
{
    hide();
    field->setMaxLength(maxSought);
    field->setPlaceholderText(tr("Find"));
    field->setAccessibleName(tr("Find in this tab"));
    connect(field, &QLineEdit::textEdited, this, &findbar::clearResult);
    auto *closeButton = new QToolButton(this);
    closeButton->setText(u"\u00d7"_s);
    closeButton->setAccessibleName(tr("Close the search"));
    closeButton->setMinimumSize(fingerSize, fingerSize);
    connect(closeButton, &QToolButton::clicked, this, &findbar::close);
    auto *row = box<QHBoxLayout>(this);
    row->addWidget(field);
    row->addWidget(closeButton);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &findbar::close);
}

void findbar::open()
{
    clearResult();
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
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter || !field->hasFocus())
        QWidget::keyPressEvent(event);
    else if (event->modifiers().testFlag(Qt::ControlModifier))
        view->openSelected();
    else
        find(event->modifiers().testFlag(Qt::ShiftModifier));
}

void findbar::find(bool newer)
{
    if (field->text().isEmpty())
        return;
    clearResult();
    if (view->findText(field->text(), newer)) {
        field->setAccessibleDescription(tr("Found: %1").arg(view->selectedLine().left(maxAnnounced)));
        return;
    }
    field->setAccessibleDescription(tr("Not found"));
    QPalette red;
    red.setColor(QPalette::Text, readable(Qt::red, palette().base().color()));
    field->setPalette(red);
}

void findbar::clearResult()
{
    field->setAccessibleDescription({});
    field->setPalette({});
}
