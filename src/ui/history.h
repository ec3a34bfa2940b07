// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// What was typed in one tab, to be walked through with Up and Down. The line that is being typed is kept.
class history
{
public:
    /// Keeps a line that was sent, and starts anew at the newest.
    void add(const QString &line);
    /// The line before the one that is shown, or that one itself when there is none; `shown` is what the
    /// field holds.
    QString older(const QString &shown);
    QString newer(const QString &shown);

private:
    /// Newest first.
    QStringList lines;
    QString unfinished;
    /// Which line is shown; 0 is the unfinished one.
    qsizetype place = 0;
};
