// SPDX-License-Identifier: MIT
#include "jumpbutton.h"

#include "fingers.h"

namespace {

constexpr int margin = 4;

} // namespace

jumpbutton::jumpbutton(QWidget *parent) : QToolButton(parent)
{
    setFocusPolicy(Qt::NoFocus);
    hide();
}

void jumpbutton::offer(qint64 newLines, const QRect &area)
{
    setVisible(newLines > 0);
    if (newLines == 0)
        return;
    setText(tr("\u2193 %1 new").arg(newLines));
    resize(sizeHint().width(), fingerHeight(sizeHint().height()));
    move(area.center().x() - width() / 2, area.bottom() - height() - margin);
}
