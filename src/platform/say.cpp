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

/// Gives the text the width that it needs, and the buttons the height.
void fit(QMessageBox *box)
{
    if (auto *label = box->findChild<QLabel *>(u"qt_msgbox_label"_s)) {
        const int room = box->screen()->availableSize().width() - besideText;
        label->setMinimumWidth(qMin(label->fontMetrics().size(0, box->text()).width(), room));
    }
    for (QAbstractButton *button : box->buttons())
        button->setMinimumHeight(fingerHeight(0));
}

} // namespace

void say(QWidget *window, const QString &text)
{
    QMessageBox box(QMessageBox::Information, u"Parlo"_s, text, QMessageBox::Ok, window);
    fit(&box);
    box.exec();
}

QMessageBox *ask(QWidget *window, const QString &question)
{
    auto *box = new QMessageBox(QMessageBox::Question, u"Parlo"_s, question,
                                QMessageBox::Yes | QMessageBox::No, window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    // Return may have been pressed for something else.
    box->setDefaultButton(QMessageBox::No);
    fit(box);
    box->open();
    return box;
}
