// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>

/// A line edit whose text is always one line. QLineEdit keeps line breaks that are pasted into it, and the
/// server would take what follows one as another command.
class inputline : public QLineEdit
{
    Q_OBJECT

public:
    /// For an on-screen keyboard: it must not capitalise a name or replace it by another word.
    static constexpr Qt::InputMethodHints asTyped = Qt::ImhNoAutoUppercase | Qt::ImhNoPredictiveText;
    static constexpr Qt::InputMethodHints hostName = asTyped | Qt::ImhUrlCharactersOnly;

    explicit inputline(QWidget *parent, const QString &text = {});

Q_SIGNALS:
    /// The text had several lines, as in `lines`, and is now one. Comes from inside of the change: the receiver must
    /// not change the text.
    void joined(const QStringList &lines);
};
