// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// The lines that were typed in one tab, for Up and Down. The unfinished line is kept, too.
class history
{
public:
    /// Adds a line that was sent, and goes back to the newest one.
    void add(const QString &line);
    /// The line before the one that is shown, or that one itself if it is the oldest. `shown` is the text of
    /// the field.
    QString older(const QString &shown);
    QString newer(const QString &shown);

private:
    /// Newest first.
    QStringList lines;
    QString unfinished;
    /// Which line is shown; 0 is the unfinished one.
    qsizetype place = 0;
};
