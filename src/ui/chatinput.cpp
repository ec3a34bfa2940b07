// SPDX-License-Identifier: MIT
#include "chatinput.h"

#include "linenote.h"
#include "say.h"

#include <QKeyEvent>
#include <QMessageBox>

namespace {

/// Texts of fewer characters are one line, however many bytes they take and however long the channel's name is.
constexpr qsizetype shortText = 40;
/// So many pasted lines are sent at most; at the pace that servers bear that takes minutes.
constexpr qsizetype maxLines = 100;

} // namespace

chatinput::chatinput(QWidget *parent, std::function<QStringList()> completions)
    : inputline(parent), words(std::move(completions)), note(new linenote(this))
{
    connect(this, &QLineEdit::returnPressed, this, [this] { typed.add(text()); });
    // A paste, a drop and an input method all end here, but from inside of their change.
    connect(this, &inputline::joined, this, [this](const QStringList &lines) {
        QMetaObject::invokeMethod(
            this, [this, lines, before = shown] { ask(lines, before); }, Qt::QueuedConnection);
    });
    connect(this, &QLineEdit::textChanged, this, [this](const QString &text) {
        shown = text;
        showPieces();
    });
}

void chatinput::mindLines(std::function<qsizetype(const QString &)> function)
{
    pieces = std::move(function);
    showPieces();
}

void chatinput::showPieces()
{
    const qsizetype count = pieces && text().size() > shortText ? pieces(text()) : 1;
    QString told;
    if (count == 0)
        told = tr("Too long");
    else if (count > 1)
        told = tr("%1 lines").arg(count);
    if (told == note->text())
        return;
    note->tell(told, count == 0);
    setAccessibleDescription(told);
}

void chatinput::ask(QStringList lines, const QString &before)
{
    if (lines.size() < 2 || !pieces || pieces(text()) < 0)
        return;
    // The change has cleared the undo history, so it is done once more.
    const QString line = text();
    const int cursor = cursorPosition();
    setText(before);
    selectAll();
    insert(line);
    setCursorPosition(cursor);

    const bool all = lines.size() <= maxLines && line.size() < maxLength();
    lines = lines.first(qMin(lines.size(), maxLines));
    QString question = tr("Send %1 lines?").arg(lines.size());
    if (!all)
        question += u'\n' + tr("The others are left out.");
    // The box is a child of this field, and no event loop runs here: the server may close this tab meanwhile.
    connect(::ask(this, question), &QMessageBox::accepted, this, [this, lines] { Q_EMIT gotLines(lines); });
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
