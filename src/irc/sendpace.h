// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// When the next line may go out, for a server that ends connections that flood it (RFC 1459, 8.10): four at
/// once, then one each 1.5 s. Times are in ms of a clock that only goes forward.
class sendpace
{
public:
    static constexpr int atOnce = 4;
    static constexpr qint64 msPerLine = 1500;

    /// How long the next line must wait; 0 when it may go at `now`.
    qint64 wait(qint64 now) const { return qMax<qint64>(0, paid - (atOnce - 1) * msPerLine - now); }
    /// One line goes out.
    void sent(qint64 now) { paid = qMax(paid, now) + msPerLine; }

private:
    /// From then on a full four may go at once.
    qint64 paid = 0;
};
