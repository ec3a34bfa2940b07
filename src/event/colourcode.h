// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

/// What follows the colour character U+0003 in a text: up to two digits for the colour and, behind a comma, up to two for
/// the background.
struct colourcode
{
    /// The character that begins one.
    static constexpr QChar mark{3};

    /// Reads what stands at the front of `text`, which is what follows the mark. Any text will do.
    explicit colourcode(QStringView text);

    /// -1 where no number is given.
    int colour = -1;
    int background = -1;
    /// How many characters of the text belong to it.
    qsizetype length = 0;
};
