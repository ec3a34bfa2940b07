// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

/// The style of the program, except that some parts are larger for fingers: the scroll buttons of a tab bar,
/// scroll bars, the button in the corner between them, and the entries of menus.
class fingerstyle : public QProxyStyle
{
    Q_OBJECT

public:
    /// Gives `widget` this style.
    static void apply(QWidget *widget);

    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                           const QWidget *widget) const override;
};
