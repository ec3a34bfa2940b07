// SPDX-License-Identifier: MIT
#include "outbox.h"

#include <utility>

outbox::outbox()
{
    next.callOnTimeout(this, &outbox::pump);
}

void outbox::add(const QList<piece> &pieces)
{
    // Whoever types a line at a time needs no pace.
    if (pieces.size() == 1 && waiting.isEmpty()) {
        if (const qint64 now = countdown::now(); pace.wait(now) == 0)
            pace.sent(now);
        Q_EMIT due(pieces.first());
        return;
    }
    waiting += pieces;
    if (!next.isActive())
        pump();
}

QList<outbox::piece> outbox::clear()
{
    next.stop();
    return std::exchange(waiting, {});
}

void outbox::pump()
{
    while (!waiting.isEmpty()) {
        const qint64 now = countdown::now();
        if (const qint64 wait = pace.wait(now); wait > 0) {
            next.start(std::chrono::milliseconds(wait));
            return;
        }
        pace.sent(now);
        Q_EMIT due(waiting.takeFirst());
    }
}
