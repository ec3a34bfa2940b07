// SPDX-License-Identifier: MIT
#pragma once

#include <QScrollBar>

/// A scroll bar that is not painted for every new line of a log. To paint it takes as long as to lay out and paint
/// twenty lines: styles fill it with gradients, which Qt hands to other threads in small pieces. A line moves the
/// slider by a pixel at most, so it may lag behind by a few.
class calmbar : public QScrollBar
{
    Q_OBJECT

public:
    using QScrollBar::QScrollBar;

    /// What lines that come and go make of the bar.
    void set(int maximum, int page, int value);

protected:
    /// What the user makes of it: here nothing lags.
    void sliderChange(SliderChange change) override;

private:
    QRect slider() const;

    /// Where the slider was painted last.
    QRect painted;
    bool setting = false;
};
