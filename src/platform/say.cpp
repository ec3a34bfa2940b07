// SPDX-License-Identifier: MIT
#include "say.h"

#include "fingers.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace {

/// Pixels beside the text, for the icon, the margins and the frame of the window.
constexpr int besideText = 110;

} // namespace

void say(QWidget *window, const QString &text)
{
    QMessageBox box(QMessageBox::Information, u"Parlo"_s, text, QMessageBox::Ok, window);
    if (auto *label = box.findChild<QLabel *>(u"qt_msgbox_label"_s)) {
        const int room = window->screen()->availableSize().width() - besideText;
        label->setMinimumWidth(qMin(label->fontMetrics().size(0, text).width(), room));
    }
    box.button(QMessageBox::Ok)->setMinimumHeight(fingerHeight(0));
    box.exec();
}
