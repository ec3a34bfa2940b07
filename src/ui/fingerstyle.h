// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

/// The style of the program, but for what a finger would miss: the buttons that scroll tabs, scroll bars, and
/// the button in the corner between them.
class fingerstyle : public QProxyStyle
{
    Q_OBJECT

public:
    /// Gives `widget` this style.
    static void apply(QWidget *widget);

    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
};
