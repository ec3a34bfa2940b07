// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// The text of an input line, and the position of its cursor.
struct typedline
{
    QString text;
    qsizetype cursor = 0;

    friend bool operator==(const typedline &, const typedline &) = default;
};

/// Completion with the Tab key: shows the words that begin like the one before the cursor, one after the
/// other.
class completion
{
public:
    /// Takes those of `words`, the best first, that begin like the word before the cursor, ignoring case. A
    /// nick at the start of the line gets ": " after it, everything else a space.
    completion(const typedline &line, const QStringList &words);
    completion() = default;

    /// `line` with the next word, or with the previous one if `back` is set. After the last word comes the
    /// first. `line` unchanged if no word fits.
    typedline next(const typedline &line, bool back);
    /// Whether `line` is what next() returned last. Then Tab continues with the next word.
    bool continues(const typedline &line) const { return line == shown; }

private:
    QString before;
    QString after;
    QStringList fitting;
    qsizetype place = -1;
    typedline shown;
};
