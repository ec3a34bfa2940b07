// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

/// Asks for the password of `account` above `window`. False if the user cancels; else `password` becomes what was typed.
bool askPassword(QWidget *window, const QString &account, QString *password);
