// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

/// A line of a log: "2026-11-23T14:03:05+01:00 <ada> hello", in local time with its distance from UTC (ISO 8601).
struct logline
{
    /// Not valid if the line in the file began with no time.
    QDateTime time;
    QString text;

    /// The beginning of lines of this second.
    static QByteArray stampOf(const QDateTime &localTime);
    /// A line in UTF-8, with its end. Line breaks and tabs in the text become spaces, other control characters go.
    static QByteArray written(const QByteArray &stamp, const QString &text);
    /// The line that `bytes`, without the end, are. Takes any bytes.
    static logline read(const QByteArray &bytes);
};
