// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

/// When a connection that failed or was lost is tried again: after 5, 10, 20, 40, 80, 160, 300, 300 … seconds,
/// and up to a quarter more, so that a server that comes back is not met by all its clients at once.
///
/// Times are in ms of a clock that only goes forward; clock and chance come from outside.
class retryclock
{
public:
    /// The server has welcomed us.
    void registered(qint64 now) { welcome = now; }
    /// The server said in an ERROR line why it ends the connection.
    void error(const QString &why);
    /// The connection is over: so long to wait for the next try. `chance` is from 0 to 1.
    qint64 nextTry(qint64 now, double chance);
    /// The user wants something new: all that was counted is forgotten.
    void reset() { *this = {}; }

private:
    int tries = 0;
    bool throttled = false;
    std::optional<qint64> welcome;
};
