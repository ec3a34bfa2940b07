// SPDX-License-Identifier: MIT
#include "countdown.h"

#include <QElapsedTimer>

namespace {

QList<countdown *> countdowns;
qint64 passed = 0;

} // namespace

countdown::countdown()
{
    setSingleShot(true);
    countdowns.append(this);
}

countdown::~countdown()
{
    countdowns.removeOne(this);
}

qint64 countdown::now()
{
    static const QElapsedTimer clock = [] {
        QElapsedTimer started;
        started.start();
        return started;
    }();
    return clock.elapsed() + passed;
}

void countdown::pass(int ms)
{
    passed += ms;
    for (countdown *c : std::as_const(countdowns)) {
        if (c->isActive())
            c->start(qMax(0, c->remainingTime() - ms));
    }
}
