// SPDX-License-Identifier: MIT
#pragma once

#include "linestore.h"

#include <utility>

/// What is selected of a log: by character, by word or by line.
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
    /// Lines that were removed are not selected any more.
    logplace start() const { return std::max(from, logplace{lines.begin(), 0}); }
    logplace end() const { return std::max(to, start()); }
    /// Where the nearest `sought` begins, above what is selected, or below where `newer` says so, whatever its
    /// case. Begins at the bottom if nothing is selected, and goes on at the other end.
    std::optional<logplace> find(const QString &sought, bool newer) const;
    /// Copies the text into the clipboard and, where there is one, the primary selection.
    void copy() const;
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
