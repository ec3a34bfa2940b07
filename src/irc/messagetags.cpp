// SPDX-License-Identifier: MIT
#include "messagetags.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

struct escape
{
    char16_t letter = 0;
    char16_t meaning = 0;
};

constexpr escape escapes[] = {{u':', u';'}, {u's', u' '}, {u'r', u'\r'}, {u'n', u'\n'}};

/// What the letter behind a backslash stands for: mostly itself.
QChar meaningOf(QChar letter)
{
    for (const escape &e : escapes) {
        if (letter == QChar(e.letter))
            return e.meaning;
    }
    return letter;
}

QString unescaped(QStringView value)
{
    QString text;
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] != u'\\')
            text += value[i];
        else if (++i < value.size())
            text += meaningOf(value[i]);
    }
    return text;
}

} // namespace

messagetags::messagetags(QString text) : tags(std::move(text)) {}

QString messagetags::value(QStringView name) const
{
    QString found;
    for (const QStringView tag : QStringView(tags).tokenize(u';')) {
        if (tag == name)
            found.clear();
        else if (tag.startsWith(name) && tag[name.size()] == u'=')
            found = unescaped(tag.sliced(name.size() + 1));
    }
    return found.contains(QChar::ReplacementCharacter) ? QString() : found;
}

QDateTime messagetags::time() const
{
    // YYYY-MM-DDThh:mm:ss.sssZ, of which some leave out the milliseconds.
    QString text = value(u"time");
    if (text.size() < 20 || text.size() > 24 || !text.endsWith(u'Z'))
        return {};
    text.replace(":60"_L1, ":59"_L1); // a leap second
    return QDateTime::fromString(text, Qt::ISODateWithMs);
}
