// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>

/// A timer of the link that fires once, after seconds or minutes. Tests do not wait for it: they let time pass.
class countdown : public QTimer
{
    Q_OBJECT

public:
    countdown();
    ~countdown() override;

    /// Milliseconds of a clock that only goes forward.
    static qint64 now();
    /// For tests: as if so many milliseconds had passed. What is due then fires when control is back in the event loop.
    static void pass(int ms);
};
