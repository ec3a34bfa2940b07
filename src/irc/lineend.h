// SPDX-License-Identifier: MIT
#pragma once

/// `line`, a QString or a QStringView, without the CR and LF at its end, in any order and number.
template <typename Text>
Text withoutLineEnd(Text line)
{
    while (line.endsWith(u'\n') || line.endsWith(u'\r'))
        line.chop(1);
    return line;
}
