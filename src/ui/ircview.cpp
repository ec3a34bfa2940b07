// SPDX-License-Identifier: MIT
#include "ircview.h"

#include "colourcode.h"
#include "ircmode.h"
#include "manners.h"
#include "moderntext.h"

#include <QDateTime>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// IRC colours 1 to 15; 0 has none.
constexpr QLatin1StringView colours[] = {
    "#d6d3d6"_L1, "#0000ce"_L1, "#00ae10"_L1, "#de2400"_L1, "#dedb00"_L1,
    "#de24ad"_L1, "#ff9200"_L1, "#ffdb52"_L1, "#5adb52"_L1, "#31cfce"_L1,
    "#4adbff"_L1, "#0000ff"_L1, "#9449ff"_L1, "#848284"_L1, "#9c9a9c"_L1,
};

QString coloured(QLatin1StringView colour, const QString &html)
{
    return "<font color=\""_L1 + colour + "\">"_L1 + html + "</font>"_L1;
}

QString leaving()
{
    return coloured("#7755DD"_L1, u"&lt;-"_s) + u' ';
}

QString coming()
{
    return coloured("#7755DD"_L1, u"-&gt;"_s) + u' ';
}

QString inBrackets(const QString &reason)
{
    return u" (" + reason + u')';
}

} // namespace

ircview::ircview(QWidget *parent) : logview(parent), manner(&manners::classic()) {}

QString ircview::name(const QString &nick) const
{
    return manner->plainFields ? moderntext::name(nick) : nick;
}

QString ircview::speaker(const QString &nick) const
{
    // Tags around a nick that is read as markup could change what is shown of it.
    const bool safe = manner->plainFields || !(nick.contains(u'<') || nick.contains(u'&'));
    return mark == linestore::forUs && safe ? u"<b>" + name(nick) + u"</b>" : name(nick);
}

QString ircview::said(const QString &text) const
{
    return manner->plainFields ? moderntext::said(text) : ircToHtml(text);
}

QString ircview::field(const QString &text) const
{
    return manner->plainFields ? moderntext::said(text) : text;
}

void ircview::stampNext(const QDateTime &time)
{
    const bool today = time.date() == QDate::currentDate();
    stamp = time.toString(today ? u"[HH:mm] "_s : u"[yyyy-MM-dd HH:mm] "_s);
    stampedAt = time.toSecsSinceEpoch();
}

void ircview::showLine(const QString &line)
{
    const QString start = std::exchange(stamp, {});
    const linestore::mark what = std::exchange(mark, linestore::unmarked);
    if (std::exchange(hidden, false))
        return;
    setKeepsPlace(manner->keepsPlace);
    setShowsLinks(manner->showsLinks);
    addLine(start + line, start.isEmpty() ? QDateTime::currentSecsSinceEpoch() : stampedAt, what);
    Q_EMIT lineShown();
}

void ircview::showPast(const QList<pastline> &past)
{
    setShowsLinks(manner->showsLinks);
    QList<pastline> dated;
    QDate day;
    for (const pastline &line : past) {
        const QDateTime time = QDateTime::fromSecsSinceEpoch(line.time);
        if (time.date() != day) {
            day = time.date();
            dated.append({line.time, day.toString(Qt::ISODate)});
        }
        dated.append({line.time, time.toString(u"[HH:mm] "_s) + moderntext::name(line.text)});
    }
    addPast(dated);
}

void ircview::privmsg(const QString &nick, const QString &text)
{
    showLine(u"&lt;" + coloured("#0000ff"_L1, speaker(nick)) + u"&gt; " + said(text));
}

void ircview::action(const QString &nick, const QString &text)
{
    showLine(coloured("#0000ff"_L1, u"*"_s) + u' ' + speaker(nick) + u' ' + said(text));
}

void ircview::notice(const QString &nick, const QString &text)
{
    showLine(u'-' + coloured("#880088"_L1, speaker(nick)) + u"- " + said(text));
}

void ircview::message(const QString &text)
{
    showLine(coloured("#DD8888"_L1, u"-"_s) + u' ' + field(text));
}

void ircview::join(const QString &nick)
{
    showLine(coming() + name(nick) + u" has joined");
}

void ircview::part(const QString &nick, const QString &reason)
{
    showLine(leaving() + name(nick) + u" has left" +
             (reason.isEmpty() ? QString() : inBrackets(field(reason))));
}

void ircview::quit(const QString &nick, const QString &reason)
{
    showLine(leaving() + name(nick) + u" has quit" + inBrackets(field(reason)));
}

void ircview::kick(const QString &kicker, const QString &kicked, const QString &reason)
{
    showLine(leaving() + name(kicker) + u" has kicked " + name(kicked) +
             (reason.isEmpty() ? QString() : inBrackets(field(reason))));
}

void ircview::modes(const ircmode *m)
{
    showLine(name(m->who()->nick()) + u" sets modes " + name(m->target()) + u' ' + field(m->modes()) + u' ' +
             field(m->args()));
}

void ircview::nick(const QString &oldnick, const QString &newnick)
{
    showLine(name(oldnick) + u" is now known as " + name(newnick));
}

void ircview::crowd(bool left, const QString &text)
{
    showLine((left ? leaving() : coming()) + field(text));
}

QString ircview::ircToHtml(const QString &text)
{
    QString html;
    html.reserve(text.size() + 64);
    bool bold = false;
    bool underline = false;
    bool colour = false;
    const auto close = [&html](bool &open, QLatin1StringView tag) {
        if (open)
            html += tag;
        open = false;
    };
    const auto toggle = [&html, &close](bool &open, QLatin1StringView start, QLatin1StringView end) {
        if (open)
            return close(open, end);
        html += start;
        open = true;
    };
    for (qsizetype i = 0; i < text.size();) {
        const QChar c = text[i++];
        switch (c.unicode()) {
        case u'<':
            html += "&lt;"_L1;
            break;
        case u'>':
            html += "&gt;"_L1;
            break;
        case 0x02:
            toggle(bold, "<b>"_L1, "</b>"_L1);
            break;
        case 0x1f:
            toggle(underline, "<u>"_L1, "</u>"_L1);
            break;
        case 0x0f:
            close(underline, "</u>"_L1);
            close(bold, "</b>"_L1);
            close(colour, "</font>"_L1);
            break;
        case 0x03: {
            close(colour, "</font>"_L1);
            const colourcode code(QStringView(text).sliced(i));
            i += code.length;
            if (code.colour < 1 || code.colour > 15)
                break;
            html += "<font color=\""_L1 + colours[code.colour - 1] + "\">"_L1;
            colour = true;
            break;
        }
        default:
            html += c;
        }
    }
    close(bold, "</b>"_L1);
    return html;
}
