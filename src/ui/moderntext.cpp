// SPDX-License-Identifier: MIT
#include "moderntext.h"

#include "formatting.h"

using namespace Qt::StringLiterals;

namespace {

struct lookTag
{
    bool textlook::*part = nullptr;
    QStringView name;
};

constexpr lookTag switches[] = {
    {&textlook::bold, u"b"},
    {&textlook::italic, u"i"},
    {&textlook::underline, u"u"},
    {&textlook::strike, u"\u017fs"},
    {&textlook::reverse, u"\u017freverse"},
};

struct colourTag
{
    quint32 textlook::*part = nullptr;
    QStringView name;
};

constexpr colourTag colours[] = {{&textlook::colour, u"font"}, {&textlook::background, u"\u017fmark"}};

/// The tags that lead from one look to the other.
QString change(const textlook &from, const textlook &to)
{
    QString tags;
    for (const lookTag &t : switches) {
        if (from.*(t.part) != to.*(t.part))
            tags += (to.*(t.part) ? u"<"_s : u"</"_s) + t.name + u'>';
    }
    for (const colourTag &t : colours) {
        const quint32 colour = to.*(t.part);
        if (from.*(t.part) == colour)
            continue;
        if (colour == 0)
            tags += u"</" + t.name + u'>';
        else
            tags += u'<' + t.name + u" color=\"#" +
                    QString::number(colour & 0xffffff, 16).rightJustified(6, u'0') + u"\">";
    }
    return tags;
}

QString escaped(const QString &text)
{
    QString html;
    html.reserve(text.size());
    for (const QChar c : text) {
        if (c == u'<')
            html += "&lt;"_L1;
        else if (c == u'>')
            html += "&gt;"_L1;
        else if (c == u'&')
            html += "&amp;"_L1;
        else
            html += c;
    }
    return html;
}

} // namespace

QString moderntext::said(const QString &text)
{
    QString markup;
    textlook look;
    for (const textrun &run : formatted(text)) {
        markup += change(look, run.look) + escaped(run.text);
        look = run.look;
    }
    return markup + change(look, {});
}

QString moderntext::name(const QString &text)
{
    return escaped(unformatted(text));
}
