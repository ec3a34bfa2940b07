// SPDX-License-Identifier: MIT
#include "weblink.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Nobody opens a longer address, and browsers refuse it.
constexpr qsizetype maxLength = 2048;
/// No line of 512 bytes (RFC 1459, 2.3) has more. A longer one could make us try thousands of them.
constexpr int maxTried = 64;

bool endsAddress(QChar c)
{
    return c.isSpace() || !c.isPrint() || c == u'<' || c == u'>' || c == u'"';
}

/// How many characters the scheme takes that `text` ends with; 0 if it is not one of ours.
qsizetype schemeLength(QStringView text)
{
    for (const QStringView scheme : {u"https", u"http"}) {
        if (text.endsWith(scheme, Qt::CaseInsensitive))
            return scheme.size();
    }
    return 0;
}

/// `address` without what belongs to the sentence at its end.
QStringView withoutSentence(QStringView address)
{
    // So many brackets are closed that were not opened.
    qsizetype round = address.count(u')') - address.count(u'(');
    qsizetype square = address.count(u']') - address.count(u'[');
    const auto belongs = [&](QChar last) {
        if (last == u')')
            return round-- > 0;
        if (last == u']')
            return square-- > 0;
        return QStringView(u".,;:!?'").contains(last);
    };
    while (belongs(address.back()))
        address.chop(1);
    return address;
}

} // namespace

QList<weblinkrange> weblinks(const QString &text)
{
    const QStringView slashes = u"://";
    QList<weblinkrange> found;
    qsizetype done = 0;
    qsizetype at = text.indexOf(slashes);
    for (int tried = 0; at >= 0 && tried < maxTried; at = text.indexOf(slashes, std::max(done, at + 1))) {
        const qsizetype scheme = schemeLength(QStringView(text).first(at).sliced(done));
        if (scheme == 0)
            continue;
        ++tried;
        const qsizetype start = at - scheme;
        const auto *begin = text.cbegin() + start;
        const auto *limit = begin + std::min(maxLength, text.size() - start);
        const QStringView address = withoutSentence({begin, std::find_if(begin, limit, endsAddress)});
        QUrl url(address.toString());
        if (!url.isValid() || url.host().isEmpty())
            continue;
        found.append({start, address.size(), std::move(url)});
        done = start + address.size();
    }
    return found;
}

QUrl weblink(const QString &text, qsizetype position)
{
    for (const weblinkrange &link : weblinks(text)) {
        if (position >= link.start && position < link.start + link.length)
            return link.url;
    }
    return {};
}
