// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

class QLineEdit;

/// A small note at the end of a line edit, above its text, which makes room for it. Nothing else moves.
class linenote : public QLabel
{
    Q_OBJECT

public:
    explicit linenote(QLineEdit *edit);

    /// Shows `text`, in red if it is a `fault`; nothing if it is empty.
    void tell(const QString &text, bool fault);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void place();

    QLineEdit *edit;
    bool isFault = false;
};
