// SPDX-License-Identifier: MIT
#include "ui/ircview.h"

#include "irc/ircmode.h"

namespace {

/// IRC colours 1 to 15; 0 has none.
constexpr QLatin1StringView colours[] = {
    QLatin1StringView("#d6d3d6"), QLatin1StringView("#0000ce"), QLatin1StringView("#00ae10"),
    QLatin1StringView("#de2400"), QLatin1StringView("#dedb00"), QLatin1StringView("#de24ad"),
    QLatin1StringView("#ff9200"), QLatin1StringView("#ffdb52"), QLatin1StringView("#5adb52"),
    QLatin1StringView("#31cfce"), QLatin1StringView("#4adbff"), QLatin1StringView("#0000ff"),
    QLatin1StringView("#9449ff"), QLatin1StringView("#848284"), QLatin1StringView("#9c9a9c"),
};

QString coloured(QLatin1StringView colour, const QString &html)
{
    return QLatin1StringView("<font color=\"") + colour + QLatin1StringView("\">") + html +
           QLatin1StringView("</font>");
}

QString leaving()
{
    return coloured(QLatin1StringView("#7755DD"), QStringLiteral("&lt;-")) + u' ';
}

QString inBrackets(const QString &reason)
{
    return u" (" + reason + u')';
}

/// Reads up to two decimal digits at `i`, which moves behind them; -1 when there is none.
int readNumber(const QString &text, qsizetype &i)
{
    int number = -1;
    for (int digits = 0; digits < 2 && i < text.size() && text[i].digitValue() >= 0; ++digits, ++i)
        number = qMax(number, 0) * 10 + text[i].digitValue();
    return number;
}

} // namespace

void ircview::privmsg(const QString &nick, const QString &text)
{
    addLine(u"&lt;" + coloured(QLatin1StringView("#0000ff"), nick) + u"&gt; " + ircToHtml(text));
}

void ircview::action(const QString &nick, const QString &text)
{
    addLine(coloured(QLatin1StringView("#0000ff"), QStringLiteral("*")) + u' ' + nick + u' ' +
            ircToHtml(text));
}

void ircview::notice(const QString &nick, const QString &text)
{
    addLine(u'-' + coloured(QLatin1StringView("#880088"), nick) + u"- " + ircToHtml(text));
}

void ircview::message(const QString &text)
{
    addLine(coloured(QLatin1StringView("#DD8888"), QStringLiteral("-")) + u' ' + text);
}

void ircview::join(const QString &nick)
{
    addLine(coloured(QLatin1StringView("#7755DD"), QStringLiteral("-&gt;")) + u' ' + nick + u" has joined");
}

void ircview::part(const QString &nick, const QString &reason)
{
    addLine(leaving() + nick + u" has left" + (reason.isEmpty() ? QString() : inBrackets(reason)));
}

void ircview::quit(const QString &nick, const QString &reason)
{
    addLine(leaving() + nick + u" has quit" + inBrackets(reason));
}

void ircview::kick(const QString &kicker, const QString &kicked, const QString &reason)
{
    addLine(leaving() + kicker + u" has kicked " + kicked +
            (reason.isEmpty() ? QString() : inBrackets(reason)));
}

void ircview::modes(const ircmode *m)
{
    addLine(m->who()->nick() + u" sets modes " + m->target() + u' ' + m->modes() + u' ' + m->args());
}

void ircview::nick(const QString &oldnick, const QString &newnick)
{
    addLine(oldnick + u" is now known as " + newnick);
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
            html += QLatin1StringView("&lt;");
            break;
        case u'>':
            html += QLatin1StringView("&gt;");
            break;
        case 0x02:
            toggle(bold, QLatin1StringView("<b>"), QLatin1StringView("</b>"));
            break;
        case 0x1f:
            toggle(underline, QLatin1StringView("<u>"), QLatin1StringView("</u>"));
            break;
        case 0x0f:
            close(underline, QLatin1StringView("</u>"));
            close(bold, QLatin1StringView("</b>"));
            close(colour, QLatin1StringView("</font>"));
            break;
        case 0x03: {
            close(colour, QLatin1StringView("</font>"));
            const int number = readNumber(text, i);
            if (i < text.size() && text[i] == u',')
                readNumber(text, ++i);
            if (number < 1 || number > 15)
                break;
            html += QLatin1StringView("<font color=\"") + colours[number - 1] + QLatin1StringView("\">");
            colour = true;
            break;
        }
        default:
            html += c;
        }
    }
    close(bold, QLatin1StringView("</b>"));
    return html;
}
