// SPDX-License-Identifier: MIT
#include "form.h"

#include "inputline.h"

#include <QLabel>

form::form(QWidget *parent) : QFormLayout(parent)
{
    // The defaults of Qt's styles differ.
    setFieldGrowthPolicy(AllNonFixedFieldsGrow);
    setRowWrapPolicy(DontWrapRows);
}

inputline *form::addInput(const QString &label, Qt::InputMethodHints hints, const QString &text)
{
    auto *edit = new inputline(parentWidget(), text);
    edit->setInputMethodHints(hints);
    auto *name = new QLabel(label, parentWidget());
    name->setBuddy(edit);
    // As high as its row, so that its text is in the middle.
    name->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    addRow(name, edit);
    return edit;
}
