// SPDX-License-Identifier: MIT
#pragma once

#include <QListWidget>

/// The list of presets. A row is chosen when it is selected: by a click, or by a key that moves to it or
/// stays on it. The row that the keyboard is on shows a frame, and is not chosen by that alone.
class presetlist : public QListWidget
{
    Q_OBJECT

public:
    explicit presetlist(QWidget *parent);

    /// Shows these names instead of those before. None is selected; the keyboard stays on the row that it was
    /// on.
    void fill(const QStringList &names);
    /// The selected row, or -1.
    int selectedRow() const;

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
