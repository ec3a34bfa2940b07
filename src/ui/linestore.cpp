// SPDX-License-Identifier: MIT
#include "linestore.h"

#include <QStringMatcher>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

namespace {

template <typename T>
void put(std::vector<char> &bytes, const T *values, size_t count)
{
    const auto *raw = reinterpret_cast<const char *>(values);
    bytes.insert(bytes.end(), raw, raw + count * sizeof(T));
}

bool isLatin1(QStringView text)
{
    char16_t all = 0;
    for (const QChar c : text)
        all |= c.unicode();
    return all < 0x100;
}

/// A character with its case folded. The micro sign would become a Greek letter, and the other way round here, so
/// that everything that equals Latin-1 is Latin-1.
char16_t folded(QChar c)
{
    const char16_t to = c.toCaseFolded().unicode();
    return to == u'\u03bc' ? u'\u00b5' : to;
}

char foldedByte(char c)
{
    static const auto table = [] {
        std::array<char, 256> all{};
        for (size_t from = 0; from < all.size(); ++from)
            all[from] = static_cast<char>(folded(QChar(static_cast<char16_t>(from))));
        return all;
    }();
    return table[static_cast<uchar>(c)];
}

} // namespace

void linestore::append(QStringView text, const std::vector<richspan> &spans, qint64 time, quint8 marks)
{
    if (last % pageLines == 0) {
        if (!pages.empty()) {
            pages.back().bytes.shrink_to_fit();
            pages.back().starts.shrink_to_fit();
        }
        pages.emplace_back();
    }
    page &p = pages.back();
    head h;
    h.length = static_cast<int>(text.size());
    h.time = static_cast<quint32>(std::clamp<qint64>(time, 0, std::numeric_limits<quint32>::max()));
    h.spans = static_cast<quint16>(spans.size());
    const bool another = isNewDay(h.time) && (marks & past) == 0;
    h.marks = static_cast<quint8>(marks | (another ? newDay : unmarked));
    h.wide = !isLatin1(text);
    p.starts.push_back(static_cast<quint32>(p.bytes.size()));
    put(p.bytes, &h, 1);
    put(p.bytes, spans.data(), spans.size());
    if (h.wide) {
        put(p.bytes, text.utf16(), static_cast<size_t>(text.size()));
    } else {
        const size_t start = p.bytes.size();
        p.bytes.resize(start + static_cast<size_t>(text.size()));
        std::transform(text.begin(), text.end(), p.bytes.begin() + static_cast<ptrdiff_t>(start),
                       [](QChar c) { return static_cast<char>(c.unicode()); });
    }
    p.characters += h.length + 1;
    ++last;
}

bool linestore::isNewDay(qint64 time)
{
    if (time >= dayStart && time < dayEnd)
        return false;
    const bool none = dayEnd == 0;
    const QDate day = QDateTime::fromSecsSinceEpoch(time).date();
    dayStart = day.startOfDay().toSecsSinceEpoch();
    dayEnd = day.addDays(1).startOfDay().toSecsSinceEpoch();
    return !none;
}

void linestore::keepLast(qint64 lines)
{
    while (last - first > lines) {
        pages.front().characters -= length(first) + 1;
        if (++first % pageLines == 0)
            pages.pop_front();
    }
}

const linestore::page &linestore::pageOf(qint64 line) const
{
    return pages[static_cast<size_t>(line / pageLines - first / pageLines)];
}

const char *linestore::startOf(qint64 line) const
{
    const page &p = pageOf(line);
    return p.bytes.data() + p.starts[static_cast<size_t>(line % pageLines)];
}

linestore::head linestore::headOf(qint64 line) const
{
    head h;
    std::memcpy(&h, startOf(line), sizeof h);
    return h;
}

std::vector<richspan> linestore::spans(qint64 line) const
{
    std::vector<richspan> spans(headOf(line).spans);
    if (!spans.empty())
        std::memcpy(spans.data(), startOf(line) + sizeof(head), spans.size() * sizeof(richspan));
    return spans;
}

const char *linestore::textOf(qint64 line, const head &h) const
{
    return startOf(line) + sizeof h + h.spans * sizeof(richspan);
}

void linestore::read(qint64 line, QString &text) const
{
    const head h = headOf(line);
    const char *start = textOf(line, h);
    text.resize(h.length);
    if (h.wide)
        std::memcpy(text.data(), start, static_cast<size_t>(h.length) * sizeof(QChar));
    else
        std::transform(start, start + h.length, text.begin(), [](char c) { return QLatin1Char(c); });
}

QString linestore::text(qint64 line) const
{
    QString text;
    read(line, text);
    return text;
}

QString linestore::text(logplace from, logplace to) const
{
    QString all;
    QString one;
    for (qint64 line = from.line; line <= to.line && line < last; ++line) {
        read(line, one);
        const qsizetype start = line == from.line ? from.at : 0;
        const qsizetype stop = line == to.line ? to.at : one.size();
        all += QStringView(one).sliced(start, stop - start);
        if (line != to.line)
            all += u'\n';
    }
    return all;
}

qint64 linestore::charactersBefore(logplace place) const
{
    qint64 count = place.at;
    qint64 line = first;
    for (; line / pageLines < place.line / pageLines; line += pageLines - line % pageLines)
        count += pageOf(line).characters;
    for (; line < place.line; ++line)
        count += length(line) + 1;
    return count;
}

logplace linestore::placeAfter(qint64 characters) const
{
    qint64 line = first;
    while (line < last && characters >= pageOf(line).characters) {
        characters -= pageOf(line).characters;
        line += pageLines - line % pageLines;
    }
    for (; line < last; ++line) {
        if (characters <= length(line))
            return {line, static_cast<int>(std::max<qint64>(characters, 0))};
        characters -= length(line) + 1;
    }
    return endPlace();
}

logplace linestore::endPlace() const
{
    return isEmpty() ? logplace{last, 0} : logplace{last - 1, length(last - 1)};
}

std::optional<logplace> linestore::find(const QString &sought, logplace from, bool newer) const
{
    const QStringMatcher matcher(sought, Qt::CaseInsensitive);
    // Most lines do not contain it. Bytes tell that sooner than characters do.
    QString same = sought;
    std::transform(same.cbegin(), same.cend(), same.begin(), folded);
    const std::string needle = same.toLatin1().toStdString();
    const bool latin1 = isLatin1(same);
    std::string bytes;
    const auto mayContain = [&](qint64 line) {
        const head h = headOf(line);
        if (h.wide || !latin1)
            return h.wide;
        bytes.resize(static_cast<size_t>(h.length));
        std::transform(textOf(line, h), textOf(line, h) + h.length, bytes.begin(), foldedByte);
        return bytes.find(needle) != std::string::npos;
    };
    QString text;
    for (qint64 line = from.line; line >= first && line < last; line += newer ? 1 : -1) {
        if (!mayContain(line))
            continue;
        read(line, text);
        const bool here = line == from.line;
        qsizetype at = matcher.indexIn(QStringView(text), newer && here ? from.at : 0);
        // The last one of a line is looked for only where there is one: that takes longer.
        if (at >= 0 && !newer) {
            const qsizetype limit = here ? from.at : text.size();
            at = limit > at ? text.lastIndexOf(sought, limit - 1, Qt::CaseInsensitive) : -1;
        }
        if (at >= 0)
            return logplace{line, static_cast<int>(at)};
    }
    return {};
}
