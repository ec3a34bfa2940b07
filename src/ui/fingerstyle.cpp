// SPDX-License-Identifier: MIT
#include "fingerstyle.h"

#include "fingers.h"

#include <QWidget>

namespace {

/// A compromise: a wider bar would take too much from the text of a small screen.
constexpr int barSize = 20;

} // namespace

void fingerstyle::apply(QWidget *widget)
{
    // A widget does not own its style.
    auto *style = new fingerstyle;
    style->setParent(widget);
    widget->setStyle(style);
}

int fingerstyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    const int usual = QProxyStyle::pixelMetric(metric, option, widget);
    if (metric == PM_TabBarScrollButtonWidth)
        return qMax(usual, fingerSize);
    if (metric == PM_ScrollBarExtent)
        return qMax(usual, barSize);
    return usual;
}
