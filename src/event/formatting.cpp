// SPDX-License-Identifier: MIT
#include "formatting.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr char16_t boldCode = 0x02;
constexpr char16_t colourCode = 0x03;
constexpr char16_t hexColourCode = 0x04;
constexpr char16_t resetCode = 0x0f;
constexpr char16_t reverseCode = 0x16;
constexpr char16_t italicCode = 0x1d;
constexpr char16_t strikeCode = 0x1e;
constexpr char16_t underlineCode = 0x1f;

struct toggle
{
    char16_t code = 0;
    bool textlook::*part = nullptr;
};

constexpr toggle toggles[] = {
    {boldCode, &textlook::bold},     {italicCode, &textlook::italic},   {underlineCode, &textlook::underline},
    {strikeCode, &textlook::strike}, {reverseCode, &textlook::reverse},
};

/// The colours that clients have agreed on, 0 to 98.
constexpr quint32 palette[] = {
    0xffffff, 0x000000, 0x00007f, 0x009300, 0xff0000, 0x7f0000, 0x9c009c, 0xfc7f00, 0xffff00, 0x00fc00,
    0x009393, 0x00ffff, 0x0000fc, 0xff00ff, 0x7f7f7f, 0xd2d2d2, 0x470000, 0x472100, 0x474700, 0x324700,
    0x004700, 0x00472c, 0x004747, 0x002747, 0x000047, 0x2e0047, 0x470047, 0x47002a, 0x740000, 0x743a00,
    0x747400, 0x517400, 0x007400, 0x007449, 0x007474, 0x004074, 0x000074, 0x4b0074, 0x740074, 0x740045,
    0xb50000, 0xb56300, 0xb5b500, 0x7db500, 0x00b500, 0x00b571, 0x00b5b5, 0x0063b5, 0x0000b5, 0x7500b5,
    0xb500b5, 0xb5006b, 0xff0000, 0xff8c00, 0xffff00, 0xb2ff00, 0x00ff00, 0x00ffa0, 0x00ffff, 0x008cff,
    0x0000ff, 0xa500ff, 0xff00ff, 0xff0098, 0xff5959, 0xffb459, 0xffff71, 0xcfff60, 0x6fff6f, 0x65ffc9,
    0x6dffff, 0x59b4ff, 0x5959ff, 0xc459ff, 0xff66ff, 0xff59bc, 0xff9c9c, 0xffd39c, 0xffff9c, 0xe2ff9c,
    0x9cff9c, 0x9cffdb, 0x9cffff, 0x9cd3ff, 0x9c9cff, 0xdc9cff, 0xff9cff, 0xff94d3, 0x000000, 0x131313,
    0x282828, 0x363636, 0x4d4d4d, 0x656565, 0x818181, 0x9f9f9f, 0xbcbcbc, 0xe2e2e2, 0xffffff,
};
static_assert(std::size(palette) == 99);
constexpr quint32 opaque = 0xff000000;

/// The digits at the front of `text`, at most two for a number of the palette, exactly six for a hexadecimal colour.
QStringView digitsOf(QStringView text, bool hex)
{
    const auto isDigit = [hex](QChar c) {
        const char16_t low = c.unicode() | 0x20;
        return (c >= u'0' && c <= u'9') || (hex && low >= u'a' && low <= u'f');
    };
    const QStringView most = text.first(std::min<qsizetype>(text.size(), hex ? 6 : 2));
    const qsizetype count = std::find_if_not(most.begin(), most.end(), isDigit) - most.begin();
    return hex && count < 6 ? QStringView() : most.first(count);
}

quint32 colourOf(QStringView digits, bool hex)
{
    if (hex)
        return opaque | digits.toUInt(nullptr, 16);
    const uint number = digits.toUInt();
    return number < std::size(palette) ? opaque | palette[number] : 0;
}

/// Reads what follows a colour code, and returns how long it is.
qsizetype readColours(QStringView text, bool hex, textlook *look)
{
    const QStringView colour = digitsOf(text, hex);
    if (colour.isEmpty()) {
        look->colour = 0;
        look->background = 0;
        return 0;
    }
    look->colour = colourOf(colour, hex);
    const QStringView rest = text.sliced(colour.size());
    const QStringView background = rest.startsWith(u',') ? digitsOf(rest.sliced(1), hex) : QStringView();
    if (background.isEmpty())
        return colour.size();
    look->background = colourOf(background, hex);
    return colour.size() + 1 + background.size();
}

/// What would begin another line or leave a gap of any width.
bool isBreak(char32_t c)
{
    return (c >= U'\t' && c <= U'\r') || c == 0x85 || c == 0x2028 || c == 0x2029;
}

/// What has no picture, or none but a box.
bool isInvisible(char32_t c)
{
    switch (QChar::category(c)) {
    case QChar::Other_Control:
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Other_NotAssigned:
        return true;
    default:
        return c >= 0xfff9 && c <= 0xfffc; // marks of annotations, and the place of an object
    }
}

/// The directions that are open (UAX #9, 2): for each the character that closes it.
class directions
{
public:
    /// Whether `c`, which comes next, may stay. One that closes what was not opened here may not.
    bool take(QChar c)
    {
        if ((c >= leftToRightEmbedding && c <= rightToLeftEmbedding) ||
            (c >= leftToRightOverride && c <= rightToLeftOverride))
            return open(popDirection);
        if (c >= leftToRightIsolate && c <= firstStrongIsolate)
            return open(popIsolate);
        if (c == popDirection)
            return close(closers.endsWith(popDirection) ? closers.size() - 1 : -1);
        if (c == popIsolate)
            return close(closers.lastIndexOf(popIsolate));
        return true;
    }
    /// Closes all that is open.
    QString atEnd() const
    {
        QString text(closers);
        std::reverse(text.begin(), text.end());
        return text;
    }

    /// Whether the text or its surroundings may have to be read from right to left.
    static bool isTurning(QStringView piece)
    {
        const QChar first = piece.front();
        if (first < firstTurning)
            return false;
        const char32_t c =
            piece.size() > 1 ? QChar::surrogateToUcs4(first, piece[1]) : char32_t(first.unicode());
        const QChar::Direction direction = QChar::direction(c);
        return direction == QChar::DirR || direction == QChar::DirAL || direction == QChar::DirAN ||
               (c >= leftToRightEmbedding.unicode() && c <= rightToLeftOverride.unicode()) ||
               (c >= leftToRightIsolate.unicode() && c <= popIsolate.unicode());
    }

    /// No character before it is read from right to left.
    static constexpr QChar firstTurning{0x590};
    static constexpr QChar firstStrongIsolate{0x2068};
    static constexpr QChar popIsolate{0x2069};

private:
    static constexpr QChar leftToRightEmbedding{0x202a};
    static constexpr QChar rightToLeftEmbedding{0x202b};
    static constexpr QChar popDirection{0x202c};
    static constexpr QChar leftToRightOverride{0x202d};
    static constexpr QChar rightToLeftOverride{0x202e};
    static constexpr QChar leftToRightIsolate{0x2066};
    /// More than people need, and fewer than would go unheard (UAX #9, BD2).
    static constexpr qsizetype maxOpen = 16;

    bool open(QChar closer)
    {
        if (closers.size() == maxOpen)
            return false;
        closers += closer;
        return true;
    }
    bool close(qsizetype place)
    {
        if (place < 0)
            return false;
        closers.truncate(place); // an isolate takes along what was opened in it
        return true;
    }

    QString closers;
};

/// The runs of `text`; one at most, without `codes`.
QList<textrun> runsOf(QStringView text, bool codes)
{
    QList<textrun> runs;
    textlook look;
    directions open;
    bool turns = false;
    const auto append = [&](QStringView piece) {
        if (runs.isEmpty() || runs.last().look != look)
            runs.append({QString(), look});
        runs.last().text += piece;
        turns = turns || directions::isTurning(piece);
    };
    for (qsizetype i = 0; i < text.size();) {
        const QChar c = text[i++];
        const auto *const toggled = std::find_if(std::begin(toggles), std::end(toggles),
                                                 [c](const toggle &t) { return c == QChar(t.code); });
        if (codes && toggled != std::end(toggles)) {
            look.*(toggled->part) = !(look.*(toggled->part));
        } else if (codes && c == QChar(resetCode)) {
            look = {};
        } else if (codes && (c == QChar(colourCode) || c == QChar(hexColourCode))) {
            i += readColours(text.sliced(i), c == QChar(hexColourCode), &look);
        } else if (isBreak(c.unicode())) {
            append(u" ");
        } else if (c.isHighSurrogate() && i < text.size() && text[i].isLowSurrogate()) {
            if (!isInvisible(QChar::surrogateToUcs4(c, text[i])))
                append(text.sliced(i - 1, 2));
            ++i;
        } else if (!isInvisible(c.unicode()) && open.take(c)) {
            append(text.sliced(i - 1, 1));
        }
    }
    if (!open.atEnd().isEmpty())
        append(open.atEnd());
    // Otherwise it would change places with what stands beside it.
    if (turns) {
        runs.first().text.prepend(directions::firstStrongIsolate);
        runs.last().text.append(directions::popIsolate);
    }
    return runs;
}

} // namespace

QList<textrun> formatted(const QString &said)
{
    return runsOf(said, true);
}

QString unformatted(const QString &name)
{
    const QList<textrun> runs = runsOf(name, false);
    return runs.isEmpty() ? QString() : runs.first().text;
}
