// SPDX-License-Identifier: MIT
#pragma once

#include "richline.h"

#include <QDateTime>
#include <QString>

#include <deque>
#include <optional>
#include <tuple>
#include <vector>

/// A place between two characters of a log.
struct logplace
{
    /// Lines are counted from the first ever, and keep their number when the ones before them are removed.
    qint64 line = 0;
    /// So many UTF-16 units into the line.
    int at = 0;

    friend bool operator==(const logplace &, const logplace &) = default;
    friend bool operator<(const logplace &a, const logplace &b)
    {
        return std::tie(a.line, a.at) < std::tie(b.line, b.at);
    }
};

/// The lines of a log: the text, the runs of looks and the time of each, in a few large pieces of memory.
///
/// A line without characters beyond Latin-1 takes a byte for each character. Appending a line and removing the
/// first ones take constant time. Lines that are asked for must exist.
class linestore
{
public:
    /// Bits of what a line is besides its text.
    enum mark : quint8 {
        unmarked = 0,
        /// Set by append(): the line before it was said on another day, and it does not say so itself.
        newDay = 1,
        /// Said to the user: it has a tint.
        forUs = 2,
        /// Of an earlier conversation: it is grey, and says itself when it was said.
        past = 4
    };

    /// The lines of a page lie together in memory. A page begins at every multiple of this number.
    static constexpr qint64 pageLines = 256;

    /// Appends a line that was said at `time`, in seconds since 1970 (UTC).
    void append(QStringView text, const std::vector<richspan> &spans, qint64 time, quint8 marks = unmarked);
    /// Removes the first lines until no more than `lines` are left.
    void keepLast(qint64 lines);

    qint64 begin() const { return first; }
    qint64 end() const { return last; }
    bool isEmpty() const { return first == last; }

    QString text(qint64 line) const;
    /// What stands between two places, with a line feed at the end of each line but the last.
    QString text(logplace from, logplace to) const;
    int length(qint64 line) const { return headOf(line).length; }
    std::vector<richspan> spans(qint64 line) const;
    QDateTime time(qint64 line) const { return QDateTime::fromSecsSinceEpoch(headOf(line).time); }
    bool has(qint64 line, mark m) const { return (headOf(line).marks & m) != 0; }

    /// The characters of the page that begins with `line`, with a line end for each line.
    qint64 pageCharacters(qint64 line) const { return pageOf(line).characters; }
    /// How many characters, with line ends, stand before `place`; and the place behind so many of them.
    qint64 charactersBefore(logplace place) const;
    logplace placeAfter(qint64 characters) const;

    /// The end of the last line.
    logplace endPlace() const;
    /// Where the nearest `sought` begins, whatever its case: at `from` or behind it if `newer`, else before it.
    std::optional<logplace> find(const QString &sought, logplace from, bool newer) const;

private:
    /// What a line begins with in memory. Its runs follow, then its text.
    struct head
    {
        int length = 0;
        quint32 time = 0;
        quint16 spans = 0;
        quint8 marks = unmarked;
        /// Whether a character takes two bytes.
        bool wide = false;
    };

    struct page
    {
        std::vector<char> bytes;
        /// Where each line begins in the bytes.
        std::vector<quint32> starts;
        qint64 characters = 0;
    };

    const page &pageOf(qint64 line) const;
    const char *startOf(qint64 line) const;
    head headOf(qint64 line) const;
    const char *textOf(qint64 line, const head &h) const;
    /// Reads a text into a buffer, which is used again and again.
    void read(qint64 line, QString &text) const;
    bool isNewDay(qint64 time);

    std::deque<page> pages;
    qint64 first = 0;
    qint64 last = 0;
    /// The day of the last line, in seconds since 1970 (UTC).
    qint64 dayStart = 0;
    qint64 dayEnd = 0;
};
