// SPDX-License-Identifier: MIT
#pragma once

#include "linestore.h"

#include <utility>

/// What is selected of a log. It begins with a character, a word or a line, and grows and shrinks by the same.
class logselection
{
public:
    enum class unit { character, word, line };

    explicit logselection(const linestore &store) : lines(store) {}

    /// Begins anew, with the unit that `place` is in.
    void begin(logplace place, unit by = unit::character);
    /// Reaches from where it began to `place`.
    void extendTo(logplace place);
    void select(logplace from, logplace to);
    void clear() { select({}, {}); }

    bool isEmpty() const { return start() == end(); }
    /// Lines that are gone are not selected any more.
    logplace start() const { return std::max(from, logplace{lines.begin(), 0}); }
    logplace end() const { return std::max(to, start()); }
    QString text() const { return lines.text(start(), end()); }
    /// Which characters of a line are selected: from the first number to before the second.
    std::pair<int, int> in(qint64 line) const;

private:
    std::pair<logplace, logplace> unitAt(logplace place) const;

    const linestore &lines;
    logplace from;
    logplace to;
    /// The unit that it began with.
    std::pair<logplace, logplace> origin;
    unit by = unit::character;
};
