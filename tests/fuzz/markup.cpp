// SPDX-License-Identifier: MIT
//
// The view shows what somebody said, except the control codes, whatever the text contains.

#include "fuzz.h"

#include "ircview.h"
#include "richline.h"

#include <QRegularExpression>
#include <QTextBlock>

using namespace Qt::StringLiterals;

static QString read(const QString &markup)
{
    const richline line(markup);
    int end = 0;
    for (const richspan &span : line.spans()) {
        require(span.start >= end && span.length > 0, "runs are in order and do not overlap");
        end = span.start + span.length;
    }
    require(line.spans().size() <= 512 && end <= line.text().size(), "runs are within bounds");
    require(line.text().size() <= 2 * markup.size(), "a text is no longer than twice its markup");
    return QString(line.text()).remove(richline::breakHere);
}

void fuzz(const QByteArray &input)
{
    QString text = QString::fromUtf8(input);
    read(text);
    // Without "&" there are no entities, which would change the text.
    const QString html = ircview::ircToHtml(text.remove(u'&'));
    require(html.size() <= 15 * text.size() + 8, "markup is in proportion to its text");
    const auto open = [&html](const char *name) {
        return html.count(u'<' + QLatin1StringView(name)) - html.count(u"</" + QLatin1StringView(name));
    };
    require(open("b") == 0 && open("u") / 2 == 0 && open("font") / 2 == 0, "tags are balanced");

    // Digits are those of Unicode.
    static const QRegularExpression codes(u"\\x{3}\\d{0,2}(,\\d{0,2})?|[\\x{2}\\x{f}\\x{1f}]"_s,
                                          QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression breaks(u"[\\t\\n\\r\\x{2028}\\x{2029}\\x{fdd0}\\x{fdd1}\\x{fffc}]"_s);
    text.remove(codes).remove(richline::breakHere).replace(breaks, u" "_s);
    require(read(html) == text, "the text is what was said");
    ircview view(nullptr);
    // addLine() removes line ends at the end.
    view.addLine(html + u'.');
    const QString shown = view.document()->lastBlock().text();
    require(view.blockCount() == 1 && QString(shown).remove(richline::breakHere) == text + u'.',
            "the view shows what was said");
}
