// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QMessageBox;
class QWidget;

/// Shows `text` in a message box above `window`, and returns when the user has closed it. A plain QMessageBox
/// would break the text after every word on a small screen.
void say(QWidget *window, const QString &text);

/// Asks above `window` and returns at once. The box emits accepted() for "Yes", and deletes itself when it closes.
QMessageBox *ask(QWidget *window, const QString &question);
