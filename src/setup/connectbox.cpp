// SPDX-License-Identifier: MIT
#include "connectbox.h"

#include "box.h"
#include "config.h"
#include "fingers.h"
#include "form.h"
#include "inputline.h"
#include "ircport.h"
#include "lastsession.h"
#include "passwordprompt.h"
#include "preferences.h"
#include "presetbox.h"
#include "presetlist.h"
#include "say.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

/// Qt needs half a second to lay out a name that fills the settings file.
constexpr int maxName = 512;

QString quickGroup()
{
    return u"QuickConnect"_s;
}

} // namespace

connectbox::connectbox(QString *nick, QString *server, int *port, QStringList *channels)
    : nickOut(nick), serverOut(server), portOut(port), channelsOut(channels)
{
    setObjectName(u"foo"_s);
    setModal(true);
    fillSmallScreen(this);
    setWindowTitle(u"Connect to IRC Server"_s);

    mainBox = new QWidget(this);
    mainBox->setMinimumSize(200, 150);
    box<QVBoxLayout>(this)->addWidget(mainBox);
    auto *mainColumn = box<QVBoxLayout>(mainBox);
    pages = new QTabWidget(mainBox);
    mainColumn->addWidget(pages);
    connectButton = new QPushButton(tr("Connect"), mainBox);
    mainColumn->addWidget(connectButton);
    connect(connectButton, &QPushButton::clicked, this, &connectbox::ConnectButtonPush);

    presetPage = new QWidget(pages);
    auto *presetRow = box<QHBoxLayout>(presetPage);
    presetList = new presetlist(presetPage);
    presetList->setAccessibleName(tr("Presets"));
    presetRow->addWidget(presetList);
    presetButtons = new QWidget(presetPage);
    presetRow->addWidget(presetButtons);
    auto *buttonColumn = box<QVBoxLayout>(presetButtons);
    addButton = new QPushButton(tr("Add"), presetButtons);
    connect(addButton, &QPushButton::clicked, this, &connectbox::addPreset);
    editButton = new QPushButton(tr("Edit"), presetButtons);
    connect(editButton, &QPushButton::clicked, this, &connectbox::editPreset);
    delButton = new QPushButton(tr("Del"), presetButtons);
    connect(delButton, &QPushButton::clicked, this, &connectbox::delPreset);
    // In Qt, Return presses the button that has the focus. Here it always means "Connect".
    for (QPushButton *button : {addButton, editButton, delButton}) {
        button->setAutoDefault(false);
        buttonColumn->addWidget(button);
    }
    connectButton->setDefault(true);
    for (QPushButton *button : {connectButton, addButton, editButton, delButton})
        button->setMinimumHeight(fingerHeight(0));
    pages->addTab(presetPage, tr("Presets"));

    quickPage = new QWidget(pages);
    auto *quickColumn = box<QVBoxLayout>(quickPage);
    quickGrid = new QWidget(quickPage);
    quickColumn->addWidget(quickGrid, 0, Qt::AlignTop);
    auto *rows = box<form>(quickGrid);
    rows->setSpacing(5);
    nickEdit = rows->addInput(tr("Nick:"), inputline::asTyped);
    connect(nickEdit, &QLineEdit::textChanged, this, &connectbox::setNick);
    serverEdit = rows->addInput(tr("Server:"), inputline::hostName);
    connect(serverEdit, &QLineEdit::textChanged, this, &connectbox::setServer);
    pages->addTab(quickPage, tr("Quick"));

    connect(presetList, &QListWidget::itemSelectionChanged, this, &connectbox::enableButtons);
    connect(presetList, &QListWidget::itemDoubleClicked, this, &connectbox::ConnectButtonPush);
    connect(pages, &QTabWidget::currentChanged, this, &connectbox::enableButtons);
    loadSettings();
    fillPresetList();
    presetList->setFocus();
    nickEdit->setText(*nickOut);
    serverEdit->setText(*serverOut);
}

void connectbox::proposeServer(const QString &server)
{
    pages->setCurrentWidget(quickPage);
    serverEdit->setText(server);
}

void connectbox::proposeLast()
{
    const lastsession last = lastsession::load();
    if (!last.address.isValid() || !preferences::load(Config::settingsName()).reopens)
        return;
    proposeServer(last.text());
    nickEdit->setText(last.nick);
    connectButton->setFocus();
}

void connectbox::setNick(const QString &text)
{
    *nickOut = text;
}

void connectbox::setServer(const QString &text)
{
    *serverOut = text;
}

void connectbox::ConnectButtonPush()
{
    accept();
}

void connectbox::accept()
{
    const QWidget *page = pages->currentWidget();
    if (page == quickPage ? checkQuickConnect() : takePreset())
        done(Accepted);
}

void connectbox::sayNotSaved()
{
    say(this, tr("The settings\ncould not be saved"));
}

bool connectbox::checkQuickConnect()
{
    const auto refuse = [this](QLineEdit *field, const QString &why) {
        say(this, why);
        field->setFocus();
        return false;
    };
    if (nickOut->isEmpty())
        return refuse(nickEdit, tr("You must specify a nickname"));
    if (nickOut->contains(u' '))
        return refuse(nickEdit, tr("You can't have a space in your nick"));
    if (serverOut->isEmpty())
        return refuse(serverEdit, tr("You must specify an IRC server"));
    if (serverOut->contains(u' '))
        return refuse(serverEdit, tr("You can't have a space\nin the server name"));
    const ircaddress address(*serverOut);
    if (const QString error = ircaddress::errorOf(*serverOut); !error.isEmpty())
        return refuse(serverEdit, error);
    if (!address.account().isEmpty() && !askPassword(this, address.account(), &m_details.password))
        return false;
    Config config(Config::settingsName());
    config.setGroup(quickGroup());
    config.writeEntry(u"Nick"_s, *nickOut);
    config.writeEntry(u"Server"_s, *serverOut);
    if (!config.save())
        sayNotSaved();
    *portOut = ircPort;
    return true;
}

bool connectbox::takePreset()
{
    const int i = presetList->selectedRow();
    if (i < 0)
        return false;
    const preset &chosen = presets.at(i);
    if (const QString error = ircaddress::errorOf(chosen.server); !error.isEmpty()) {
        say(this, error);
        return false;
    }
    m_details = chosen.details();
    *nickOut = chosen.nick;
    *serverOut = chosen.server;
    *portOut = static_cast<int>(chosen.port);
    *channelsOut = chosen.channels;
    return true;
}

void connectbox::loadSettings()
{
    Config config(Config::settingsName());
    config.setGroup(quickGroup());
    *nickOut = config.readEntry(u"Nick"_s, preset::defaultNick());
    *serverOut = config.readEntry(u"Server"_s, preset::defaultServer());
    presets = preset::load(Config::settingsName());
}

void connectbox::fillPresetList()
{
    QStringList names;
    for (const preset &p : std::as_const(presets))
        names.append(p.name.left(maxName));
    presetList->fill(names);
    enableButtons();
}

void connectbox::enableButtons()
{
    const bool chosen = presetList->selectedRow() >= 0;
    // A button that is switched off would give its focus to its neighbour.
    if (!chosen && (focusWidget() == editButton || focusWidget() == delButton))
        presetList->setFocus();
    editButton->setEnabled(chosen);
    delButton->setEnabled(chosen);
    connectButton->setEnabled(chosen || pages->currentWidget() == quickPage);
}

void connectbox::savePresets()
{
    if (!preset::save(Config::settingsName(), presets))
        sayNotSaved();
}

void connectbox::runEditor(bool adding)
{
    presetbox editor(&presets, presetList->selectedRow(), adding, this);
    if (editor.exec() == Rejected) {
        qWarning("Canceled");
        return;
    }
    savePresets();
    fillPresetList();
}

void connectbox::addPreset()
{
    runEditor(true);
}

void connectbox::editPreset()
{
    if (presetList->selectedRow() >= 0)
        runEditor(false);
}

void connectbox::delPreset()
{
    const int i = presetList->selectedRow();
    if (i < 0)
        return;
    presets.removeAt(i);
    savePresets();
    fillPresetList();
}
