// SPDX-License-Identifier: MIT
#include "ignorelist.h"

#include "ircuser.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// No server has longer names. It keeps the comparison short when one sends them.
constexpr qsizetype maxName = 256;

/// Whether `text` is what `mask` describes. A "*" that went wrong is only tried again from the last "*" on, so this
/// takes at most the product of both lengths.
bool fits(QStringView text, QStringView mask)
{
    qsizetype inText = 0;
    qsizetype inMask = 0;
    qsizetype star = -1;
    qsizetype behindStar = 0;
    while (inText < text.size()) {
        if (inMask < mask.size() && mask[inMask] == u'*') {
            star = inMask++;
            behindStar = inText;
        } else if (inMask < mask.size() && (mask[inMask] == u'?' || mask[inMask] == text[inText])) {
            ++inMask;
            ++inText;
        } else if (star >= 0) {
            inMask = star + 1;
            inText = ++behindStar;
        } else {
            return false;
        }
    }
    return std::ranges::all_of(mask.sliced(inMask), [](QChar c) { return c == u'*'; });
}

QString orAny(const QString &part)
{
    return part.isEmpty() ? u"*"_s : part;
}

} // namespace

ignorelist::ignorelist(const QStringList &kept)
{
    for (const QString &mask : kept)
        add(mask, isupport::classic());
}

QString ignorelist::maskOf(const QString &nickOrMask)
{
    const QString text = nickOrMask.trimmed();
    const auto isOdd = [](QChar c) { return c.isSpace() || c.category() == QChar::Other_Control; };
    if (text.isEmpty() || text.size() > maxLength || std::ranges::any_of(text, isOdd))
        return {};
    const bool hostAlone = text.contains(u'@') && !text.contains(u'!');
    const ircuser parts(hostAlone ? u"*!" + text : text);
    const QString mask = orAny(parts.nick()) + u'!' + orAny(parts.user()) + u'@' + orAny(parts.host());
    return mask.size() > maxLength ? QString() : mask;
}

bool ignorelist::add(const QString &nickOrMask, const isupport &rules)
{
    const QString mask = maskOf(nickOrMask);
    if (mask.isEmpty() || masks.size() >= maxEntries || find(mask, rules) >= 0)
        return false;
    masks.append(mask);
    return true;
}

bool ignorelist::remove(const QString &nickOrMask, const isupport &rules)
{
    const qsizetype at = find(maskOf(nickOrMask), rules);
    if (at >= 0)
        masks.removeAt(at);
    return at >= 0;
}

bool ignorelist::ignores(const ircuser &who, const isupport &rules) const
{
    if (masks.isEmpty())
        return false;
    const casemapping names = rules.caseOfNames();
    const bool isServer = who.user().isEmpty() && who.host().isEmpty() && who.nick().contains(u'.');
    const QString name = folded(
        who.nick().left(maxName) + u'!' + who.user().left(maxName) + u'@' + who.host().left(maxName), names);
    return std::ranges::any_of(masks, [&](const QString &mask) {
        return (!isServer || QStringView(mask).first(mask.indexOf(u'!')).contains(u'.')) &&
               fits(name, folded(mask, names));
    });
}

qsizetype ignorelist::find(const QString &mask, const isupport &rules) const
{
    const auto found =
        std::ranges::find_if(masks, [&](const QString &known) { return rules.same(known, mask); });
    return found == masks.end() ? -1 : found - masks.begin();
}
