// SPDX-License-Identifier: MIT
#include "calmbar.h"

#include <QStyleOptionSlider>

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace {

constexpr int maxLag = 4;

} // namespace

void calmbar::set(qint64 maximum, int page, qint64 value)
{
    const auto number = [](qint64 y) {
        return static_cast<int>(std::clamp<qint64>(y, 0, std::numeric_limits<int>::max()));
    };
    setting = true;
    setPageStep(page);
    setRange(0, number(maximum));
    setValue(number(value));
    setting = false;
    const QRect now = slider();
    if (std::abs(now.top() - painted.top()) >= maxLag || std::abs(now.bottom() - painted.bottom()) >= maxLag)
        sliderChange(SliderValueChange);
}

void calmbar::sliderChange(SliderChange change)
{
    if (setting)
        return;
    painted = slider();
    QScrollBar::sliderChange(change);
}

QRect calmbar::slider() const
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
}
