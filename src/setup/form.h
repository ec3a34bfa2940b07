// SPDX-License-Identifier: MIT
#pragma once

#include <QFormLayout>

class inputline;

/// Rows of a label and a text field, for both dialogs.
class form : public QFormLayout
{
public:
    explicit form(QWidget *parent);

    /// Adds a row; `hints` are for an on-screen keyboard.
    inputline *addInput(const QString &label, Qt::InputMethodHints hints = {}, const QString &text = {});
};
