// SPDX-License-Identifier: MIT
#pragma once

#include <QToolButton>

/// The button "↓ 12 new" at the lower edge of a log, which leads back to its bottom.
class jumpbutton : public QToolButton
{
    Q_OBJECT

public:
    explicit jumpbutton(QWidget *parent);

    /// Shows itself in `area` of its parent where there are new lines, and hides where there are none.
    void offer(qint64 newLines, const QRect &area);
};
