// SPDX-License-Identifier: MIT
#include "ctcpanswers.h"

#include "version.h"

using namespace Qt::StringLiterals;

namespace {

/// How many requests are answered in a period of so many milliseconds.
constexpr int maxAnswers = 5;
constexpr int answerPeriodMs = 10'000;

struct ctcprequest
{
    QLatin1StringView keyword;
    bool classic = false;
    /// %1 stands for the argument, %2 for our version.
    QLatin1StringView answer;
};

constexpr ctcprequest requests[] = {
    {"version"_L1, true, "VERSION Parlo %2"_L1},
    {"ping"_L1, false, "PING %1"_L1},
    {"clientinfo"_L1, false, "CLIENTINFO ACTION CLIENTINFO PING VERSION"_L1},
};

} // namespace

QString ctcpanswers::answerTo(const QString &keyword, const QString &argument, bool more)
{
    for (const ctcprequest &r : requests) {
        if ((r.classic || more) && keyword.compare(r.keyword, Qt::CaseInsensitive) == 0)
            return QString(r.answer).replace("%2"_L1, parloVersion).replace("%1"_L1, argument);
    }
    return {};
}

bool ctcpanswers::mayAnswer(qint64 now)
{
    if (answered.size() == maxAnswers && now - answered.first() < answerPeriodMs)
        return false;
    answered.append(now);
    if (answered.size() > maxAnswers)
        answered.removeFirst();
    return true;
}
