// SPDX-License-Identifier: MIT
#include "casemapping.h"

using namespace Qt::StringLiterals;

namespace {

struct range
{
    QLatin1StringView name;
    casemapping mapping = casemapping::unicode;
    /// From "A" on, the last character that has a small one 32 places on.
    char16_t last = 0;
};

constexpr range ranges[] = {
    {"ascii"_L1, casemapping::ascii, u'Z'},
    {"rfc1459"_L1, casemapping::rfc1459, u'^'},
    {"strict-rfc1459"_L1, casemapping::strictRfc1459, u']'},
};

} // namespace

QString folded(const QString &name, casemapping mapping)
{
    for (const range &r : ranges) {
        if (r.mapping != mapping)
            continue;
        QString small = name;
        for (QChar &c : small) {
            if (c >= u'A' && c <= QChar(r.last))
                c = QChar(c.unicode() + 32);
        }
        return small;
    }
    return name.toLower();
}

bool sameName(const QString &a, const QString &b, casemapping mapping)
{
    if (mapping == casemapping::unicode)
        return a.compare(b, Qt::CaseInsensitive) == 0;
    return a.size() == b.size() && folded(a, mapping) == folded(b, mapping);
}

casemapping casemappingOf(QStringView name)
{
    for (const range &r : ranges) {
        if (name.compare(r.name, Qt::CaseInsensitive) == 0)
            return r.mapping;
    }
    return casemapping::unicode;
}
