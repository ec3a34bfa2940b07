// SPDX-License-Identifier: MIT
#include "calmbar.h"

#include <QStyleOptionSlider>

#include <cstdlib>

namespace {

constexpr int maxLag = 4;

} // namespace

void calmbar::set(int maximum, int page, int value)
{
    setting = true;
    setPageStep(page);
    setRange(0, maximum);
    setValue(value);
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
