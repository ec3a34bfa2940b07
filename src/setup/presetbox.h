// SPDX-License-Identifier: MIT
#pragma once

#include "preset.h"

#include <QDialog>

class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class form;

/// The editor of one preset, modal: "Add Preset" or "Edit Preset".
///
/// When it is accepted it changes the list. It does not write the settings file.
class presetbox : public QDialog
{
    Q_OBJECT

public:
    /// Edits entry `index` of `presets`, or adds one in front of it (at the end for -1). The list must
    /// outlive the editor.
    presetbox(QList<preset> *presets, int index, bool adding, QWidget *parent = nullptr);

public Q_SLOTS:
    /// Stores the fields in the list and closes, or says which field is wrong and stays open.
    void accept() override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    /// A row that only a session by address has.
    QLineEdit *addTodayRow(const QString &label);
    /// Shows what those rows hold if the server is an address, and else that they are of no use.
    void showTodayRows();
    /// Takes what those rows hold, if they are of use.
    void keepTodayRows();
    void showTodayRow(QLineEdit *edit, const QString &text) const;
    /// What is wrong with the fields, and which one it is; empty when nothing is.
    QString complaint(QLineEdit **wrong) const;

    QList<preset> *presets;
    int index;
    bool adding;
    /// What is edited, as far as only a session by address has it.
    preset today;
    bool byAddress = false;
    QWidget *formBox;
    form *formGrid;
    QLineEdit *nameEdit;
    QLineEdit *nickEdit;
    QLineEdit *altNickEdit;
    QLineEdit *serverEdit;
    QLineEdit *portEdit;
    QLineEdit *passwordEdit;
    QLineEdit *channelsEdit;
    QPlainTextEdit *performEdit;
    QWidget *buttonBox;
    QPushButton *okButton;
    QPushButton *cancelButton;
};
