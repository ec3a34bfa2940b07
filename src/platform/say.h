// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

/// Shows `text` in a message box above `window`, and returns when the user has closed it. A plain QMessageBox
/// would break the text after every word on a small screen.
void say(QWidget *window, const QString &text);
