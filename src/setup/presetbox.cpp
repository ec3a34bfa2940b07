// SPDX-License-Identifier: MIT
#include "setup/presetbox.h"

#include "platform/box.h"
#include "platform/inputline.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr QSize formSize(200, 250);
/// All rows must fit into the fixed size, so the letters have a fixed one too.
constexpr int formFontPixels = 10;

QString notYet()
{
    return QStringLiteral("Not implemented yet, sorry");
}

} // namespace

presetbox::presetbox(QList<preset> *list, int listIndex, bool isNew, QWidget *parent)
    : QDialog(parent), presets(list), index(listIndex), adding(isNew)
{
    setObjectName(QStringLiteral("foo"));
    setModal(true);
    setWindowTitle(adding ? tr("Add Preset") : tr("Edit Preset"));

    formBox = new QWidget(this);
    QFont small = font();
    small.setPixelSize(formFontPixels);
    formBox->setFont(small);
    auto *column = box<QVBoxLayout>(formBox);

    preset shown = adding ? preset() : presets->at(index);
    if (adding)
        shown.port = 6667;
    auto *fields = new QWidget(formBox);
    formGrid = box<QGridLayout>(fields);
    column->addWidget(fields);
    nameEdit = addRow(tr("Preset name: "), shown.name);
    nickEdit = addRow(tr("Nickname: "), shown.nick);
    altNickEdit = addMissingRow(tr("Alt Nick: "));
    serverEdit = addRow(tr("Server: "), shown.server);
    portEdit = addRow(tr("Port: "), QString::number(shown.port));
    passwordEdit = addMissingRow(tr("Password: "));
    channelsEdit = addRow(tr("Channels: "), shown.channels.join(u','));

    column->addWidget(new QLabel(tr("Perform these commands on connect:"), formBox));
    performEdit = new QPlainTextEdit(notYet(), formBox);
    performEdit->setEnabled(false);
    column->addWidget(performEdit);

    buttonBox = new QWidget(formBox);
    auto *row = box<QHBoxLayout>(buttonBox);
    okButton = new QPushButton(tr("OK"), buttonBox);
    okButton->setDefault(true);
    connect(okButton, &QPushButton::clicked, this, &presetbox::accept);
    cancelButton = new QPushButton(tr("Cancel"), buttonBox);
    cancelButton->setAutoDefault(false);
    connect(cancelButton, &QPushButton::clicked, this, &presetbox::reject);
    row->addWidget(okButton);
    row->addWidget(cancelButton);
    column->addWidget(buttonBox);

    formBox->setFixedSize(formSize);
    setFixedSize(formBox->size());
}

QLineEdit *presetbox::addRow(const QString &label, const QString &text)
{
    auto *edit = new inputline(formBox, text);
    auto *name = new QLabel(label, formBox);
    name->setBuddy(edit);
    const int row = formGrid->rowCount();
    formGrid->addWidget(name, row, 0);
    formGrid->addWidget(edit, row, 1);
    return edit;
}

QLineEdit *presetbox::addMissingRow(const QString &label)
{
    QLineEdit *edit = addRow(label, notYet());
    QFont narrow = edit->font();
    narrow.setStretch(QFont::SemiCondensed);
    edit->setFont(narrow);
    edit->setCursorPosition(0);
    edit->setEnabled(false);
    return edit;
}

QString presetbox::complaint() const
{
    if (nameEdit->text().isEmpty())
        return tr("You must specify a preset name");
    if (nickEdit->text().isEmpty())
        return tr("You must specify a nickname");
    if (nickEdit->text().contains(u' '))
        return tr("You cannot have a space in your nickname");
    if (serverEdit->text().isEmpty())
        return tr("You must specify an IRC server");
    if (serverEdit->text().contains(u' '))
        return tr("You cannot have a space in the server name");
    return {};
}

void presetbox::accept()
{
    const QString wrong = complaint();
    if (!wrong.isEmpty()) {
        QMessageBox::information(this, QStringLiteral("Parlo"), wrong);
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
    done(Accepted);
}
