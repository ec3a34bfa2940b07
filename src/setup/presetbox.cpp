// SPDX-License-Identifier: MIT
#include "presetbox.h"

#include "box.h"
#include "fingers.h"
#include "form.h"
#include "inputline.h"
#include "say.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize formSize(200, 250);
/// One line, which says that this is not implemented.
constexpr int performHeight = 22;
/// All rows must fit into the fixed size of the form, so the size of the text is fixed as well.
constexpr int formFontPixels = 10;

QString notYet()
{
    return u"Not implemented yet, sorry"_s;
}

} // namespace

presetbox::presetbox(QList<preset> *list, int listIndex, bool isNew, QWidget *parent)
    : QDialog(parent), presets(list), index(listIndex), adding(isNew)
{
    setObjectName(u"foo"_s);
    setModal(true);
    setWindowTitle(adding ? tr("Add Preset") : tr("Edit Preset"));

    formBox = new QWidget(this);
    QFont small = font();
    small.setPixelSize(formFontPixels);
    formBox->setFont(small);
    auto *column = box<QVBoxLayout>(formBox);

    const preset shown = adding ? preset() : presets->at(index);
    auto *fields = new QWidget(formBox);
    formGrid = box<form>(fields);
    column->addWidget(fields, 1);
    nameEdit = formGrid->addInput(tr("Preset name: "), {}, shown.name);
    nickEdit = formGrid->addInput(tr("Nickname: "), inputline::asTyped, shown.nick);
    altNickEdit = addTodayRow(tr("Alt Nick: "));
    serverEdit = formGrid->addInput(tr("Server: "), inputline::hostName, shown.server);
    portEdit = formGrid->addInput(tr("Port: "), Qt::ImhDigitsOnly, QString::number(shown.port));
    passwordEdit = addTodayRow(tr("Password: "));
    channelsEdit = formGrid->addInput(tr("Channels: "), inputline::asTyped, shown.channels.join(u','));
    // The fields share all the height that is left, because fingers have to hit them.
    for (QLineEdit *edit : fields->findChildren<QLineEdit *>())
        edit->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);

    auto *performLabel = new QLabel(tr("Perform these commands on connect:"), formBox);
    column->addWidget(performLabel);
    performEdit = new QPlainTextEdit(formBox);
    performEdit->setTabChangesFocus(true);
    performLabel->setBuddy(performEdit);
    performEdit->setFixedHeight(performHeight);
    column->addWidget(performEdit);

    today = shown;
    showTodayRows();
    connect(serverEdit, &QLineEdit::textChanged, this, [this] {
        keepTodayRows();
        showTodayRows();
    });

    buttonBox = new QWidget(formBox);
    auto *row = box<QHBoxLayout>(buttonBox);
    okButton = new QPushButton(tr("OK"), buttonBox);
    okButton->setDefault(true);
    connect(okButton, &QPushButton::clicked, this, &presetbox::accept);
    cancelButton = new QPushButton(tr("Cancel"), buttonBox);
    cancelButton->setAutoDefault(false);
    connect(cancelButton, &QPushButton::clicked, this, &presetbox::reject);
    for (QPushButton *button : {okButton, cancelButton})
        button->setFixedHeight(fingerSize);
    row->addWidget(okButton);
    row->addWidget(cancelButton);
    column->addWidget(buttonBox);

    // The frame of this dialog will be as thick as that of the one behind it.
    const QSize frame = parent == nullptr ? QSize(0, 0) : parent->frameGeometry().size() - parent->size();
    setFixedSize(formSize.boundedTo(screen()->availableSize() - frame));
}

void presetbox::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    // Some window managers make a window smaller than its fixed size.
    formBox->setFixedSize(formSize.boundedTo(size()));
}

QLineEdit *presetbox::addTodayRow(const QString &label)
{
    return formGrid->addInput(label, inputline::asTyped);
}

void presetbox::keepTodayRows()
{
    if (!byAddress)
        return;
    today.altNick = altNickEdit->text();
    today.password = passwordEdit->text();
    today.perform = performEdit->toPlainText().split(u'\n', Qt::SkipEmptyParts);
}

void presetbox::showTodayRows()
{
    byAddress = ircaddress::isMeant(serverEdit->text());
    passwordEdit->setEchoMode(byAddress ? QLineEdit::Password : QLineEdit::Normal);
    showTodayRow(altNickEdit, today.altNick);
    showTodayRow(passwordEdit, today.password);
    performEdit->setEnabled(byAddress);
    performEdit->setPlainText(byAddress ? today.perform.join(u'\n') : notYet());
}

void presetbox::showTodayRow(QLineEdit *edit, const QString &text) const
{
    QFont letters = edit->font();
    letters.setStretch(byAddress ? QFont::Unstretched : QFont::SemiCondensed);
    edit->setFont(letters);
    edit->setEnabled(byAddress);
    edit->setText(byAddress ? text : notYet());
    edit->setCursorPosition(0);
}

QString presetbox::complaint(QLineEdit **wrong) const
{
    *wrong = nameEdit;
    if (nameEdit->text().isEmpty())
        return tr("You must specify a preset name");
    *wrong = nickEdit;
    if (nickEdit->text().isEmpty())
        return tr("You must specify a nickname");
    if (nickEdit->text().contains(u' '))
        return tr("You cannot have a space in your nickname");
    *wrong = serverEdit;
    if (serverEdit->text().isEmpty())
        return tr("You must specify an IRC server");
    if (serverEdit->text().contains(u' '))
        return tr("You cannot have a space in the server name");
    return ircaddress::errorOf(serverEdit->text());
}

void presetbox::accept()
{
    QLineEdit *wrong = nullptr;
    if (const QString why = complaint(&wrong); !why.isEmpty()) {
        say(this, why);
        wrong->setFocus();
        return;
    }
    if (adding) {
        if (index < 0)
            index = static_cast<int>(presets->size());
        presets->insert(index, preset());
    }
    preset &target = (*presets)[index];
    target.name = nameEdit->text();
    target.nick = nickEdit->text();
    target.server = serverEdit->text();
    target.port = portEdit->text().toUInt(nullptr, 10);
    target.channels = preset::splitChannels(channelsEdit->text());
    keepTodayRows();
    if (byAddress) {
        target.altNick = today.altNick;
        target.password = today.password;
        target.perform = today.perform;
    }
    done(Accepted);
}
