// SPDX-License-Identifier: MIT
#pragma once

#include "richline.h"

#include <QTextCharFormat>

/// How a run looks in a log with this text colour and background: its colours readable on each other, and its
/// styles. What is as in plain text is not set.
QTextCharFormat spanlook(const richspan &span, const QColor &text, const QColor &background);
