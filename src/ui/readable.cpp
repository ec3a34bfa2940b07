// SPDX-License-Identifier: MIT
#include "readable.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double enough = 4.5;
constexpr int steps = 20;

/// Relative luminance and contrast ratio as WCAG 2.1 defines them.
double luminance(const QColor &colour)
{
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

} // namespace

double contrast(const QColor &a, const QColor &b)
{
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor readable(const QColor &colour, const QColor &background)
{
    const QColor white(Qt::white);
    const QColor black(Qt::black);
    const double wanted = std::min(enough, contrast(colour, white));
    const QColor &far = contrast(white, background) > contrast(black, background) ? white : black;
    QColor mixed = colour;
    for (int step = 1; step <= steps && contrast(mixed, background) < wanted; ++step) {
        const auto mix = [step](int from, int to) { return from + (to - from) * step / steps; };
        mixed.setRgb(mix(colour.red(), far.red()), mix(colour.green(), far.green()),
                     mix(colour.blue(), far.blue()));
    }
    return mixed;
}
