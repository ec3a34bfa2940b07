// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

/// Says `text` in a message box above `window`, and returns when the user has closed it. QMessageBox alone
/// breaks the lines of a small screen after every word.
void say(QWidget *window, const QString &text);
