// SPDX-License-Identifier: MIT
#include "logline.h"

#include <algorithm>

namespace {

/// Of "2026-11-23T14:03:05", at least.
constexpr qsizetype stampLength = 19;

bool isOdd(QChar c)
{
    return c < u' ' || (c >= QChar(0x7f) && c <= QChar(0x9f)) || c == QChar::LineSeparator ||
           c == QChar::ParagraphSeparator;
}

QString onOneLine(const QString &text)
{
    if (std::ranges::none_of(text, isOdd))
        return text;
    QString line;
    for (const QChar c : text) {
        if (!isOdd(c))
            line += c;
        else if (c.isSpace())
            line += u' ';
    }
    return line;
}

} // namespace

QByteArray logline::stampOf(const QDateTime &localTime)
{
    return localTime.toOffsetFromUtc(localTime.offsetFromUtc()).toString(Qt::ISODate).toLatin1();
}

QByteArray logline::written(const QByteArray &stamp, const QString &text)
{
    return stamp + ' ' + onOneLine(text).toUtf8() + '\n';
}

logline logline::read(const QByteArray &bytes)
{
    const QString line = onOneLine(QString::fromUtf8(bytes));
    const qsizetype space = line.indexOf(u' ');
    // A day alone is no time of ours.
    const QDateTime time =
        space < stampLength ? QDateTime() : QDateTime::fromString(line.left(space), Qt::ISODate);
    return time.isValid() ? logline{time.toLocalTime(), line.mid(space + 1)} : logline{{}, line};
}
