// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>

#include <chrono>

/// A timer of the link that fires once, after seconds or minutes. Tests do not wait for it: they let time pass.
class countdown : public QTimer
{
    Q_OBJECT

public:
    countdown();
    ~countdown() override;

    void start(std::chrono::milliseconds time);

    /// Milliseconds of a clock that only goes forward.
    static qint64 now();
    /// For tests: from now on, time stands still but for pass().
    static void hold();
    /// So many milliseconds have passed. What is due then fires when control is back in the event loop.
    static void pass(int ms);

private:
    qint64 due = 0;
};
