// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

/// A line of a log: "2026-11-23T14:03:05+01:00 <ada> hello", in local time with its distance from UTC (ISO 8601).
struct logline
{
    /// Not valid if the line in the file began with no time.
    QDateTime time;
    QString text;

    /// The time as a line begins with it.
    static QByteArray stampOf(const QDateTime &localTime);
    /// A line in UTF-8, with its line break. Line breaks and tabs in the text become spaces; other control characters are
    /// left out.
    static QByteArray written(const QByteArray &stamp, const QString &text);
    /// Reads a line, without its line break. Takes any bytes.
    static logline read(const QByteArray &bytes);
};
