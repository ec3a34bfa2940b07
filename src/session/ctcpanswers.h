// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

/// What we answer to CTCP requests (CTCP draft), and how often: nobody can make us flood others.
class ctcpanswers
{
public:
    /// The answer to `keyword`, in any case, with its `argument`; empty if there is none. `more` are the requests that
    /// sessions by address know.
    static QString answerTo(const QString &keyword, const QString &argument, bool more);

    /// Whether one may be answered at `now`, in ms of a clock that only goes forward. If so, it counts as answered.
    bool mayAnswer(qint64 now);

private:
    /// When the last ones were answered.
    QList<qint64> answered;
};
