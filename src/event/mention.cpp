// SPDX-License-Identifier: MIT
#include "mention.h"

#include "colourcode.h"

namespace {

/// The server can set our nick, and searching for a very long one takes long.
constexpr qsizetype maxWord = 128;

/// RFC 2812, 2.3.1: what a nick may consist of.
bool continuesWord(QChar c)
{
    return c.isLetterOrNumber() || QStringView(u"-[]\\`_^{|}").contains(c);
}

/// The digits of a colour code are not part of the word after them.
QString withoutColours(const QString &text)
{
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool code = text[i] == colourcode::mark;
        plain += code ? u' ' : text[i];
        if (code)
            i += colourcode(QStringView(text).sliced(i + 1)).length;
    }
    return plain;
}

} // namespace

bool mentions(const QString &said, const QString &word)
{
    if (word.isEmpty() || word.size() > maxWord || !said.contains(word, Qt::CaseInsensitive))
        return false;
    const QString text = withoutColours(said);
    for (qsizetype at = text.indexOf(word, 0, Qt::CaseInsensitive); at >= 0;
         at = text.indexOf(word, at + 1, Qt::CaseInsensitive)) {
        const qsizetype end = at + word.size();
        if ((at == 0 || !continuesWord(text[at - 1])) && (end == text.size() || !continuesWord(text[end])))
            return true;
    }
    return false;
}
