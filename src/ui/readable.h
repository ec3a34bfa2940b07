// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

/// `colour`, lighter or darker as far as it takes to read it on `background`: as well as it can be read on
/// white, for which it was chosen, or with a contrast of 4.5 to 1 (WCAG 2.1, 1.4.3) where white would give
/// more. On white it stays as it is.
QColor readable(const QColor &colour, const QColor &background);
