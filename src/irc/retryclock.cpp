// SPDX-License-Identifier: MIT
#include "retryclock.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 firstPause = 5'000;
constexpr qint64 longestPause = 300'000;
/// Who was registered for so long has a server that works.
constexpr qint64 steady = 60'000;
/// Servers count connections of the last minute or so.
constexpr qint64 throttlePause = 60'000;
/// Two to the power of this makes the longest pause of the first.
constexpr int maxDoublings = 6;
constexpr double spread = 0.25;

} // namespace

void retryclock::error(const QString &why)
{
    throttled =
        why.contains("throttl"_L1, Qt::CaseInsensitive) || why.contains("too fast"_L1, Qt::CaseInsensitive);
}

qint64 retryclock::nextTry(qint64 now, double chance)
{
    if (welcome && now - *welcome >= steady)
        tries = 0;
    welcome.reset();
    qint64 pause = std::min(firstPause << std::min(tries, maxDoublings), longestPause);
    if (throttled)
        pause = std::max(pause, throttlePause);
    throttled = false;
    tries = std::min(tries + 1, maxDoublings);
    return pause + static_cast<qint64>(static_cast<double>(pause) * spread * chance);
}
