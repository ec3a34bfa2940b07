// SPDX-License-Identifier: MIT
#include "passwordprompt.h"

#include <QInputDialog>

using namespace Qt::StringLiterals;

bool askPassword(QWidget *window, const QString &account, QString *password)
{
    QInputDialog prompt(window);
    prompt.setWindowTitle(u"Parlo"_s);
    prompt.setLabelText(u"Password for "_s + account);
    prompt.setTextEchoMode(QLineEdit::Password);
    if (prompt.exec() != QDialog::Accepted)
        return false;
    *password = prompt.textValue();
    return true;
}
