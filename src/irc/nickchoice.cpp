// SPDX-License-Identifier: MIT
#include "nickchoice.h"

#include <limits>
#include <utility>

namespace {

constexpr qsizetype maxTries = 10;
/// RFC 1459, 1.2; a server that takes more tells us so once we are welcome.
constexpr int classicLength = 9;

} // namespace

nickchoice::nickchoice(const QString &first, QString other, int length)
    : alternative(std::move(other)), knownLength(length), limit(std::numeric_limits<int>::max()), tried(first)
{
}

QString nickchoice::nextAfterRefused()
{
    limit = knownLength > 0 ? knownLength : classicLength;
    return next();
}

QString nickchoice::next()
{
    while (!tried.isEmpty() && tried.size() < maxTries && nextCandidate <= maxTries + 1) {
        QString nick = candidate(nextCandidate++);
        if (nick.isEmpty() || tried.contains(nick))
            continue;
        tried.append(nick);
        return nick;
    }
    return {};
}

QString nickchoice::candidate(qsizetype i) const
{
    if (i == 1)
        return alternative.left(limit);
    if (i == 2)
        return QString(first() + u'_').left(limit);
    return first().left(limit - 1) + QString::number(i - 2);
}
