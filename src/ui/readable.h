// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

/// `colour`, made lighter or darker until it is readable on `background`: until its contrast is as on white,
/// for which it was chosen, but at most 4.5 to 1 (WCAG 2.1, 1.4.3). On white it stays unchanged.
QColor readable(const QColor &colour, const QColor &background);

/// The contrast of two colours, from 1 to 21 (WCAG 2.1).
double contrast(const QColor &a, const QColor &b);
