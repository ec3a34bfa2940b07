// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// What stands in an input line, and where its cursor is.
struct typedline
{
    QString text;
    qsizetype cursor = 0;

    friend bool operator==(const typedline &, const typedline &) = default;
};

/// The Tab key: the words that begin like the one before the cursor, shown one after the other.
class completion
{
public:
    /// Looks among `words`, the likeliest first, for those that begin like the word before the cursor; case
    /// does not count. A nick at the start of the line gets ": " behind it, all else a space.
    completion(const typedline &line, const QStringList &words);
    completion() = default;

    /// The line with the next word in it, or the one before where `back` says so; after the last one comes
    /// the first. The line as it is when nothing fits.
    typedline next(const typedline &line, bool back);
    /// Whether `line` is what next() returned last: then Tab goes on.
    bool continues(const typedline &line) const { return line == shown; }

private:
    QString before;
    QString after;
    QStringList fitting;
    qsizetype place = -1;
    typedline shown;
};
