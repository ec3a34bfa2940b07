// SPDX-License-Identifier: MIT
#include "fingerstyle.h"

#include "fingers.h"

#include <QStyleOptionMenuItem>
#include <QStyleOptionSlider>
#include <QWidget>

namespace {

/// A compromise: a wider bar would leave too little space for text on a small screen.
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
    if (metric != PM_ScrollBarExtent)
        return usual;
    // No view of ours scrolls sideways, so the horizontal bar is never shown. But it sets the height of the
    // button in the corner.
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    return bar != nullptr && bar->orientation == Qt::Horizontal ? fingerHeight(usual) : qMax(usual, barSize);
}

QSize fingerstyle::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                                    const QWidget *widget) const
{
    const QSize usual = QProxyStyle::sizeFromContents(type, option, size, widget);
    const auto *entry = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
    if (type != CT_MenuItem || entry == nullptr || entry->menuItemType == QStyleOptionMenuItem::Separator)
        return usual;
    return {usual.width(), fingerHeight(usual.height())};
}
