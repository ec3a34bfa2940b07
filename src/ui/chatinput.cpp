// SPDX-License-Identifier: MIT
#include "chatinput.h"

#include <QKeyEvent>

chatinput::chatinput(QWidget *parent, std::function<QStringList()> completions)
    : inputline(parent), words(std::move(completions))
{
    connect(this, &QLineEdit::returnPressed, this, [this] { typed.add(text()); });
}

bool chatinput::focusNextPrevChild(bool next)
{
    return text().isEmpty() && inputline::focusNextPrevChild(next);
}

void chatinput::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Up:
        return replace(typed.older(text()));
    case Qt::Key_Down:
        return replace(typed.newer(text()));
    case Qt::Key_PageUp:
        return Q_EMIT pageWanted(-1);
    case Qt::Key_PageDown:
        return Q_EMIT pageWanted(1);
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return complete(event->modifiers().testFlag(Qt::ShiftModifier));
    default:
        inputline::keyPressEvent(event);
    }
}

void chatinput::replace(const QString &line)
{
    // Setting a text clears the undo history.
    if (line != text())
        setText(line);
}

void chatinput::complete(bool back)
{
    const typedline line{text(), cursorPosition()};
    if (!tabbed.continues(line))
        tabbed = completion(line, words());
    const typedline completed = tabbed.next(line, back);
    replace(completed.text);
    setCursorPosition(static_cast<int>(completed.cursor));
}
