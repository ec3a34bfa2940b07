// SPDX-License-Identifier: MIT
#include "stspolicy.h"

#include <QStringList>

#include <algorithm>

namespace {

/// A promise for more is a mistake, and would overflow where it is added to a time.
constexpr qint64 maxDuration = qint64{10} * 365 * 24 * 60 * 60;

} // namespace

stsoffer stsoffer::read(QStringView value)
{
    stsoffer offer;
    for (const QStringView token : value.tokenize(u',')) {
        const qsizetype equals = std::max<qsizetype>(token.indexOf(u'='), 0);
        const QStringView key = token.first(equals);
        const QStringView digits = token.sliced(std::min(equals + 1, token.size()));
        bool isNumber = false;
        const qulonglong number = digits.toULongLong(&isNumber);
        if (key == u"port")
            offer.port = isNumber && number <= 65535 ? static_cast<quint16>(number) : 0;
        else if (key == u"duration" && isNumber)
            offer.duration = static_cast<qint64>(std::min<qulonglong>(number, maxDuration));
    }
    return offer;
}

stspolicies::stspolicies(const QMap<QString, QString> &entries)
{
    for (auto it = entries.begin(); it != entries.end(); ++it) {
        const QStringList words = it.value().split(u' ');
        const policy read{words.value(0).toUShort(), words.value(1).toLongLong(),
                          words.value(2).toLongLong()};
        if (read.port != 0 && read.duration > 0 && read.duration <= maxDuration)
            policies.insert(it.key(), read);
    }
}

void stspolicies::heard(const QString &host, quint16 port, const stsoffer &offer, qint64 now)
{
    if (!offer.duration)
        return;
    if (*offer.duration == 0)
        policies.remove(host);
    else
        policies.insert(host, {port, *offer.duration, now + *offer.duration});
}

void stspolicies::linkEnded(const QString &host, qint64 now)
{
    const auto found = policies.find(host);
    if (found != policies.end())
        found->until = now + found->duration;
}

quint16 stspolicies::portFor(const QString &host, qint64 now) const
{
    const policy found = policies.value(host);
    return found.until > now ? found.port : 0;
}

QMap<QString, QString> stspolicies::entries() const
{
    QMap<QString, QString> texts;
    for (auto it = policies.begin(); it != policies.end(); ++it)
        texts.insert(it.key(), QString::number(it->port) + u' ' + QString::number(it->duration) + u' ' +
                                   QString::number(it->until));
    return texts;
}
