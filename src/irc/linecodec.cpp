// SPDX-License-Identifier: MIT
#include "linecodec.h"

#include <QStringDecoder>

#include <algorithm>

namespace {

QString latin1Text(const QByteArray &line)
{
    return QString::fromLatin1(line);
}

QByteArray latin1Bytes(const QString &text)
{
    return text.toLatin1();
}

QString utf8Text(const QByteArray &line)
{
    qsizetype end = line.size();
    while (end > 0 && (line[end - 1] == '\n' || line[end - 1] == '\r'))
        --end;
    const qsizetype tags = line.startsWith('@') ? std::clamp<qsizetype>(line.indexOf(' '), 0, end) : 0;
    const QByteArray body = line.sliced(tags, end - tags);
    // This decoder waits for the rest of a letter that is unfinished, which is no error.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder(body);
    if (decoder.hasError())
        text = QString::fromLatin1(body);
    return QString::fromUtf8(line.first(tags)) + text + QLatin1StringView(line.sliced(end));
}

QByteArray utf8Bytes(const QString &text)
{
    return text.toUtf8();
}

} // namespace

const linecodec linecodec::latin1{latin1Text, latin1Bytes};
const linecodec linecodec::utf8{utf8Text, utf8Bytes};
