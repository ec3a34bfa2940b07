// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Whether `text`, which may have control codes, contains `word` (such as a nick) as a separate word,
/// ignoring case.
bool mentions(const QString &text, const QString &word);
