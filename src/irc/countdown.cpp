// SPDX-License-Identifier: MIT
#include "countdown.h"

#include <QElapsedTimer>

using namespace std::chrono_literals;

namespace {

QList<countdown *> countdowns;
bool held = false;
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

void countdown::start(std::chrono::milliseconds time)
{
    due = now() + time.count();
    QTimer::start(held ? 24h : time);
}

qint64 countdown::now()
{
    static const QElapsedTimer clock = [] {
        QElapsedTimer started;
        started.start();
        return started;
    }();
    return held ? passed : clock.elapsed();
}

void countdown::hold()
{
    held = true;
}

void countdown::pass(int ms)
{
    passed += ms;
    for (countdown *c : std::as_const(countdowns)) {
        if (c->isActive() && c->due <= now())
            c->QTimer::start(0);
    }
}
