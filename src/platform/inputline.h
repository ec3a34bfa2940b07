// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>

/// A line edit whose text is one line whatever comes in: QLineEdit keeps line breaks that are pasted into it,
/// and on the wire each of them would start a command of its own.
class inputline : public QLineEdit
{
    Q_OBJECT

public:
    /// What an on-screen keyboard should know of names: it offers no capital and no other word.
    static constexpr Qt::InputMethodHints asTyped = Qt::ImhNoAutoUppercase | Qt::ImhNoPredictiveText;
    static constexpr Qt::InputMethodHints hostName = asTyped | Qt::ImhUrlCharactersOnly;

    explicit inputline(QWidget *parent, const QString &text = {});
};
