// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Whether `text`, with its control codes, says `word`, a nick mostly, as a word of its own and whatever the case.
bool mentions(const QString &text, const QString &word);
