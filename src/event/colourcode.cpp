// SPDX-License-Identifier: MIT
#include "colourcode.h"

namespace {

constexpr int maxDigits = 2;

/// Reads the number at `place` and moves `place` behind it; -1 if there is none.
int readNumber(QStringView text, qsizetype *place)
{
    int number = -1;
    for (int i = 0; i < maxDigits && *place < text.size() && text[*place].digitValue() >= 0; ++i, ++*place)
        number = qMax(number, 0) * 10 + text[*place].digitValue();
    return number;
}

} // namespace

colourcode::colourcode(QStringView text)
{
    colour = readNumber(text, &length);
    if (length == text.size() || text[length] != u',')
        return;
    ++length;
    background = readNumber(text, &length);
}
