// SPDX-License-Identifier: MIT
#pragma once

#include "preferences.h"

#include <QDialog>

class QCheckBox;
class QLineEdit;
class QSpinBox;

/// The page "Settings": what the user can choose of the preferences. Open it with open(): it runs no event loop of
/// its own, and deletes itself when it is closed.
class settingsbox : public QDialog
{
    Q_OBJECT

public:
    /// Shows `now`. The font of the views is as large as that of `window`, in points, if the user chooses none.
    settingsbox(preferences now, QWidget *window);

Q_SIGNALS:
    /// The user wants this from now on. What the page does not show is as it was when it opened.
    void changed(const preferences &wanted);

public Q_SLOTS:
    void done(int result) override;

private:
    QWidget *makeRows();
    /// Emits changed(), if something has.
    void apply();

    preferences shown;
    QSpinBox *fontSize = nullptr;
    QSpinBox *scrollback = nullptr;
    QCheckBox *times = nullptr;
    QCheckBox *userList = nullptr;
    QCheckBox *notifies = nullptr;
    QLineEdit *highlights = nullptr;
    QCheckBox *logs = nullptr;
    QCheckBox *reopens = nullptr;
};
