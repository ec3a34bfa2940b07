// SPDX-License-Identifier: MIT
#include "form.h"

#include "inputline.h"

#include <QLabel>

form::form(QWidget *parent) : QFormLayout(parent)
{
    // Qt's styles differ in both.
    setFieldGrowthPolicy(AllNonFixedFieldsGrow);
    setRowWrapPolicy(DontWrapRows);
}

inputline *form::addInput(const QString &label, Qt::InputMethodHints hints, const QString &text)
{
    auto *edit = new inputline(parentWidget(), text);
    edit->setInputMethodHints(hints);
    auto *name = new QLabel(label, parentWidget());
    name->setBuddy(edit);
    // As high as its row, and so in the middle of it.
    name->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    addRow(name, edit);
    return edit;
}
