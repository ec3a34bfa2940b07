// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

/// A colour code after the character U+0003: up to two digits for the colour and, after a comma, up to two
/// for the background.
struct colourcode
{
    /// The character in front of a code.
    static constexpr QChar mark{3};

    /// Reads the code at the start of `text`, which is the text after the mark. Any text is valid.
    explicit colourcode(QStringView text);

    /// -1 if no number is given.
    int colour = -1;
    int background = -1;
    /// The number of characters in the code, without the mark.
    qsizetype length = 0;
};
