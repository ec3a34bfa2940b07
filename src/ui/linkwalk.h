// SPDX-License-Identifier: MIT
#pragma once

#include "linestore.h"

#include <QObject>

#include <utility>

class logview;

/// The keyboard's way through the web addresses that are in view: each step selects the next one. Return opens it, the
/// menu key opens its menu, Up and Down go on, Escape leaves.
class linkwalk : public QObject
{
    Q_OBJECT

public:
    /// Filters the events of `log`, its parent.
    explicit linkwalk(logview *log);

    /// Selects the next address above, or below for `newer`, and goes on at the other end. The first step takes the
    /// lowest one, and the focus. Nothing happens where no address is in view.
    void step(bool newer = false);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The user has left with Escape: the focus is wanted elsewhere.
    void left();

private:
    using stretch = std::pair<logplace, logplace>;
    std::vector<stretch> inView() const;
    /// Whether what is selected is what the last step has selected.
    bool isAt() const;
    void leave();
    bool press(int key);

    logview *view;
    stretch current;
    bool walking = false;
};
