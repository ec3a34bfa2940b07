// SPDX-License-Identifier: MIT
#include "weblink.h"

#include <algorithm>

namespace {

/// Nobody opens a longer address, and browsers refuse it.
constexpr qsizetype maxLength = 2048;

bool endsAddress(QChar c)
{
    return c.isSpace() || !c.isPrint() || c == u'<' || c == u'>' || c == u'"';
}

/// Whether the last character of `address` belongs to the sentence.
bool endsSentence(QStringView address)
{
    for (const QStringView pair : {u"()", u"[]"}) {
        if (address.back() == pair.back())
            return address.count(pair.back()) > address.count(pair.front());
    }
    return QStringView(u".,;:!?'").contains(address.back());
}

} // namespace

QUrl weblink(const QString &text, qsizetype position)
{
    const qsizetype nearest = std::max<qsizetype>(0, position - maxLength);
    for (const QStringView scheme : {u"https://", u"http://"}) {
        const qsizetype start = text.lastIndexOf(scheme, position, Qt::CaseInsensitive);
        if (start < nearest)
            continue;
        const auto *begin = text.cbegin() + start;
        const auto *limit = begin + std::min(maxLength, text.size() - start);
        QStringView address(begin, std::find_if(begin, limit, endsAddress));
        while (endsSentence(address))
            address.chop(1);
        if (position >= start + address.size())
            continue;
        QUrl url(address.toString());
        if (url.isValid() && !url.host().isEmpty())
            return url;
    }
    return {};
}
