// SPDX-License-Identifier: MIT
#include "richline.h"

#include <QColor>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype maxEntity = 10;
/// A line of 512 bytes (RFC 1459, 2.3) cannot have more runs. The layout of many more takes seconds.
constexpr size_t maxSpans = 512;

/// Characters with a meaning for a text document: tab, end of a line, a block or a frame, embedded object.
bool breaksBlock(QChar c)
{
    return c == u'\t' || c == u'\n' || c == u'\r' || (c >= QChar(0x2028) && c <= QChar(0x2029)) ||
           (c >= QChar(0xfdd0) && c <= QChar(0xfdd1)) || c == QChar(0xfffc);
}

struct entity
{
    QStringView name;
    char16_t character = 0;
};

constexpr entity entities[] = {{u"lt", u'<'},   {u"gt", u'>'},    {u"amp", u'&'},
                               {u"quot", u'"'}, {u"apos", u'\''}, {u"nbsp", 0xa0}};

struct switchtag
{
    QStringView name;
    richspan::style style = richspan::plain;
};

constexpr switchtag switches[] = {{u"b", richspan::bold},         {u"strong", richspan::bold},
                                  {u"i", richspan::italic},       {u"em", richspan::italic},
                                  {u"u", richspan::underline},    {u"ins", richspan::underline},
                                  {u"\u017fs", richspan::strike}, {u"\u017freverse", richspan::reverse}};

/// The colour in the attributes of a tag; 0 when they name none.
QRgb colourOf(QStringView attributes)
{
    const QLatin1StringView key = " color"_L1;
    const qsizetype found = attributes.indexOf(key, 0, Qt::CaseInsensitive);
    if (found < 0)
        return 0;
    QStringView value = attributes.sliced(found + key.size()).trimmed();
    if (!value.startsWith(u'='))
        return 0;
    value = value.sliced(1).trimmed();
    const QChar quote = value.isEmpty() ? QChar() : value.front();
    if (quote == u'"' || quote == u'\'') {
        value = value.sliced(1);
        const qsizetype end = value.indexOf(quote);
        value = end < 0 ? value : value.first(end);
    } else {
        const auto *end = std::find_if(value.begin(), value.end(), [](QChar c) { return c.isSpace(); });
        value = value.first(end - value.begin());
    }
    const QColor named = QColor::fromString(value);
    return named.isValid() ? named.rgb() : 0;
}

} // namespace

richline::richline(QStringView markup)
{
    m_text.reserve(markup.size());
    // A "<" after the last ">" starts no tag. Without this, many of them would cost a search to the end of
    // the text each.
    const qsizetype lastEnd = markup.lastIndexOf(u'>');
    qsizetype done = 0;
    for (qsizetype i = 0; i < markup.size();) {
        qsizetype length = 0;
        if ((markup[i] == u'<' && i < lastEnd) || markup[i] == u'&') {
            appendText(markup.sliced(done, i - done));
            done = i;
            length = markup[i] == u'<' ? readTag(markup.sliced(i)) : readEntity(markup.sliced(i));
            done += length;
        }
        i += std::max<qsizetype>(length, 1);
    }
    appendText(markup.sliced(done));
    endSpan();
}

void richline::appendText(QStringView piece)
{
    for (const QChar c : piece)
        m_text += breaksBlock(c) ? u' ' : c;
}

qsizetype richline::readTag(QStringView rest)
{
    const bool closing = rest.size() > 1 && rest[1] == u'/';
    const qsizetype nameStart = closing ? 2 : 1;
    const QChar first = nameStart < rest.size() ? rest[nameStart] : QChar();
    if (!first.isLetter() && first != u'!')
        return 0;
    qsizetype nameEnd = nameStart;
    while (nameEnd < rest.size() && rest[nameEnd].isLetterOrNumber())
        ++nameEnd;
    const qsizetype end = rest.indexOf(u'>', nameEnd);
    applyTag(rest.sliced(nameStart, nameEnd - nameStart), rest.sliced(nameEnd, end - nameEnd), closing);
    return end + 1;
}

qsizetype richline::readEntity(QStringView rest)
{
    const qsizetype end = rest.first(std::min(rest.size(), maxEntity)).indexOf(u';');
    if (end < 2)
        return 0;
    const QStringView name = rest.sliced(1, end - 1);
    if (name.startsWith(u'#')) {
        const bool hex = name.size() > 1 && name[1].toLower() == u'x';
        bool ok = false;
        const char32_t code = name.sliced(hex ? 2 : 1).toUInt(&ok, hex ? 16 : 10);
        if (!ok)
            return 0;
        const bool character = code != 0 && code <= QChar::LastValidCodePoint && !QChar::isSurrogate(code);
        appendText(QString::fromUcs4(character ? &code : U"\ufffd", 1));
        return end + 1;
    }
    for (const entity &e : entities) {
        if (name == e.name) {
            appendText(QString(QChar(e.character)));
            return end + 1;
        }
    }
    return 0;
}

void richline::applyTag(QStringView name, QStringView attributes, bool closing)
{
    const bool font = name.compare(u"font", Qt::CaseInsensitive) == 0;
    if (font || name == u"\u017fmark") {
        const QRgb wanted = closing ? 0 : colourOf(attributes);
        if (closing || wanted != 0) {
            endSpan();
            (font ? colour : background) = wanted;
        }
        return;
    }
    for (const switchtag &s : switches) {
        if (name.compare(s.name, Qt::CaseInsensitive) == 0) {
            endSpan();
            styles = static_cast<quint8>(closing ? styles & ~s.style : styles | s.style);
            return;
        }
    }
}

void richline::endSpan()
{
    const int end = static_cast<int>(m_text.size());
    const bool plain = colour == 0 && background == 0 && styles == richspan::plain;
    if (end > spanStart && !plain && m_spans.size() < maxSpans)
        m_spans.push_back({spanStart, end - spanStart, colour, background, styles});
    spanStart = end;
}
