// SPDX-License-Identifier: MIT
#pragma once

#include <QScrollBar>

/// A scroll bar that is not painted for every new line of a log. Painting it takes as long as laying out and
/// painting twenty lines: styles fill it with gradients, which Qt paints on several threads in small pieces. A line
/// moves the slider by a pixel at most, so the slider may be a few pixels late.
class calmbar : public QScrollBar
{
    Q_OBJECT

public:
    using QScrollBar::QScrollBar;

    /// Sets the range and the value after lines were added or removed, in pixels.
    void set(qint64 maximum, int page, qint64 value);

protected:
    /// Changes that the user makes are painted at once.
    void sliderChange(SliderChange change) override;

private:
    QRect slider() const;

    /// Where the slider was painted last.
    QRect painted;
    bool setting = false;
};
