// SPDX-License-Identifier: MIT
#pragma once

#include "preset.h"

#include <QDialog>

class QLineEdit;
class QPushButton;
class QTabWidget;
class presetlist;

/// The modal dialog "Connect to IRC Server": a preset from the list, or a nick and a server that the user
/// types.
///
/// The choice is written through the pointers that the constructor takes. It is complete when exec() has
/// returned Accepted; otherwise parts of it may have been written.
class connectbox : public QDialog
{
    Q_OBJECT

public:
    /// The pointers must outlive the dialog.
    connectbox(QString *nick, QString *server, int *port, QStringList *channels);

    /// Opens the page "Quick" with this server in it.
    void proposeServer(const QString &server);
    /// Opens the page "Quick" with the last session, see lastsession, if the user wants that and there is one.
    void proposeLast();
    /// What the choice needs besides, if its server is an address; complete when exec() has returned Accepted.
    const destination &details() const { return m_details; }

public Q_SLOTS:
    void setNick(const QString &text);
    void setServer(const QString &text);
    void ConnectButtonPush();
    void addPreset();
    void editPreset();
    void delPreset();

public:
    /// Closes the dialog if the page in front has everything that is needed to connect.
    void accept() override;

private:
    void loadSettings();
    void fillPresetList();
    /// Only what would do something can be pressed.
    void enableButtons();
    void savePresets();
    /// Runs the editor; saves and shows what it changed.
    void runEditor(bool adding);
    void sayNotSaved();
    bool checkQuickConnect();
    bool takePreset();

    QString *nickOut;
    QString *serverOut;
    int *portOut;
    QStringList *channelsOut;
    destination m_details;
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
