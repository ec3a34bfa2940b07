// SPDX-License-Identifier: MIT
#pragma once

#include "preset.h"

#include <QDialog>

class QLineEdit;
class QPushButton;
class QTabWidget;
class presetlist;

/// The modal dialog "Connect to IRC Server": a preset from the list, or a nick and a server typed by hand.
///
/// What the user chooses goes through the pointers that the constructor takes. They hold it once exec() has
/// returned Accepted; after anything else they may hold half of what was typed.
class connectbox : public QDialog
{
    Q_OBJECT

public:
    /// The four pointers are where the choice goes. They must outlive the dialog.
    connectbox(QString *nick, QString *server, int *port, QStringList *channels);

public Q_SLOTS:
    void setNick(const QString &text);
    void setServer(const QString &text);
    void ConnectButtonPush();
    void addPreset();
    void editPreset();
    void delPreset();

public:
    /// Closes the dialog if the page in front holds a choice to connect with.
    void accept() override;

private:
    void loadSettings();
    void fillPresetList();
    void savePresets();
    /// Runs the editor; keeps and shows what it changed.
    void runEditor(bool adding);
    void sayNotSaved();
    bool checkQuickConnect();
    bool takePreset();

    QString *nickOut;
    QString *serverOut;
    int *portOut;
    QStringList *channelsOut;
    QList<preset> presets;
    QWidget *mainBox;
    QTabWidget *pages;
    QPushButton *connectButton;
    QWidget *presetPage;
    presetlist *presetList;
    QWidget *presetButtons;
    QPushButton *addButton;
    QPushButton *editButton;
    QPushButton *delButton;
    QWidget *quickPage;
    QWidget *quickGrid;
    QLineEdit *nickEdit;
    QLineEdit *serverEdit;
};
