// SPDX-License-Identifier: MIT
//
// The view shows what somebody said, except the control codes, whatever the text contains, and whatever is done to
// the view then.

#include "fuzz.h"

#include "ircview.h"
#include "lineheights.h"
#include "logselection.h"
#include "richline.h"
#include "visiblelines.h"

#include <QRegularExpression>

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
    return line.text();
}

/// Takes each byte as something that is done to a log in which every other line is `text`.
static void handle(const QByteArray &input, const QString &text)
{
    linestore store;
    lineheights heights(store);
    visiblelines seen(store);
    logselection selected(store);
    logformat format;
    format.width = 100;
    seen.setFormat(format);
    heights.reset(10, 20);
    for (qsizetype i = 0; i < std::min<qsizetype>(input.size(), 64); ++i) {
        const int what = static_cast<uchar>(input[i]);
        const int amount = what / 8;
        switch (what % 8) {
        case 0:
            for (int n = 0; n < amount * amount; ++n)
                store.append(n % 2 == 0 ? QStringView(text).first(std::min<qsizetype>(text.size(), 200))
                                        : u"x",
                             {}, qint64{amount} * 20'000);
            break;
        case 1:
            store.keepLast(qint64{amount} * amount);
            seen.dropGone();
            break;
        case 2:
            format.width = 10 + amount * 20;
            format.daySpace = amount % 2 * 14;
            seen.setFormat(format);
            seen.setHeight(amount * 20);
            heights.reset(10, 1 + amount);
            break;
        case 3:
            seen.scrollTo(seen.moved(seen.top(), (amount - 16) * 40));
            break;
        case 4:
            seen.scrollTo(seen.near(seen.totalHeight() * amount / 31));
            break;
        case 5:
            selected.begin(seen.placeAt({amount * 10, 10}), static_cast<logselection::unit>(amount % 3));
            break;
        case 6:
            selected.extendTo(seen.placeAt({50, amount * 20}));
            break;
        default:
            seen.scrollTo(seen.bottom());
            require(seen.isAtBottom() && seen.y() <= seen.totalHeight(), "the bottom is found");
        }
        if (!store.isEmpty())
            heights.set(store.begin() + i * 97 % (store.end() - store.begin()), amount);
        require(seen.top().line >= store.begin() && seen.top().line <= store.end(),
                "the view is inside the log");
        require(!(selected.end() < selected.start()) && selected.start().line >= store.begin() &&
                    (selected.isEmpty() || !(store.endPlace() < selected.end())),
                "the selection is inside the text");
        const logplace end = store.endPlace();
        require(selected.text().size() ==
                    store.charactersBefore(selected.end()) - store.charactersBefore(selected.start()),
                "the selected text is as long as it is said to be");
        require(store.placeAfter(store.charactersBefore(end)) == end, "characters are counted both ways");
    }
    qint64 sum = 0;
    for (qint64 line = store.begin(); line < store.end(); ++line) {
        if (line % 3 == 0)
            heights.set(line, static_cast<int>(line % 50));
        require(heights.above(line) == sum, "heights add up");
        sum += heights.at(line);
    }
    require(heights.total() == sum, "heights add up to the total");
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
    text.remove(codes).replace(breaks, u" "_s);
    require(read(html) == text, "the text is what was said");
    ircview view(nullptr);
    // addLine() removes line ends at the end.
    view.addLine(html + u'.');
    require(view.lines().end() == 1 && view.lines().text(0) == text + u'.', "the view shows what was said");
    handle(input, text);
}
