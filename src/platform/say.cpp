// SPDX-License-Identifier: MIT
#include "platform/say.h"

#include <QLabel>
#include <QMessageBox>
#include <QScreen>

namespace {

/// What the icon, the margins and the window manager need beside the text, in pixels.
constexpr int besideText = 110;

} // namespace

void say(QWidget *window, const QString &text)
{
    QMessageBox box(QMessageBox::Information, QStringLiteral("Parlo"), text, QMessageBox::Ok, window);
    if (auto *label = box.findChild<QLabel *>(QStringLiteral("qt_msgbox_label"))) {
        const int room = window->screen()->availableSize().width() - besideText;
        label->setMinimumWidth(qMin(label->fontMetrics().size(0, text).width(), room));
    }
    box.exec();
}
