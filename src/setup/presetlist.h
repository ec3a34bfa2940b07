// SPDX-License-Identifier: MIT
#pragma once

#include <QListWidget>

/// The list of presets. A click selects a row, and so does a key that moves to it or stays on it. The row
/// with the focus shows a frame, but the focus alone does not select it.
class presetlist : public QListWidget
{
    Q_OBJECT

public:
    explicit presetlist(QWidget *parent);

    /// Replaces the names. No row is selected; the focus stays on its row.
    void fill(const QStringList &names);
    /// The selected row, or -1.
    int selectedRow() const;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    /// An empty list says what to do.
    void paintEvent(QPaintEvent *event) override;

private:
    static QString whatToDo();
};
