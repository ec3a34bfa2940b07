// SPDX-License-Identifier: MIT
#include "linenote.h"

#include "readable.h"

#include <QEvent>
#include <QLineEdit>

namespace {

/// Pixels to the frame of the line edit.
constexpr int toFrame = 4;

} // namespace

linenote::linenote(QLineEdit *lineEdit) : QLabel(lineEdit), edit(lineEdit)
{
    hide();
    setForegroundRole(QPalette::WindowText);
    // What is below it can still be clicked.
    setAttribute(Qt::WA_TransparentForMouseEvents);
    edit->installEventFilter(this);
}

void linenote::tell(const QString &note, bool fault)
{
    isFault = fault;
    setText(note);
    setVisible(!note.isEmpty());
    place();
}

void linenote::place()
{
    if (text().isEmpty())
        return edit->setTextMargins({});
    QPalette colours = edit->palette();
    colours.setColor(QPalette::WindowText,
                     isFault ? readable(Qt::red, colours.base().color()) : colours.placeholderText().color());
    setPalette(colours);
    const bool toLeft = edit->layoutDirection() == Qt::RightToLeft;
    const int width = sizeHint().width();
    setGeometry(toLeft ? toFrame : edit->width() - toFrame - width, 0, width, edit->height());
    edit->setTextMargins(toLeft ? width + toFrame : 0, 0, toLeft ? 0 : width + toFrame, 0);
}

bool linenote::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == edit && (event->type() == QEvent::Resize || event->type() == QEvent::PaletteChange ||
                            event->type() == QEvent::FontChange))
        place();
    return QLabel::eventFilter(watched, event);
}
