// SPDX-License-Identifier: MIT
#include "ui/ircview.h"

#include "irc/ircmode.h"
#include "ui/loglayout.h"
#include "ui/richline.h"

#include <QMimeData>
#include <QScrollBar>
#include <QTextDocumentFragment>

#include <algorithm>

namespace {

/// While lines keep coming, the view is laid out and painted once in so many milliseconds.
constexpr int frameMs = 40;

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

ircview::ircview(QWidget *parent) : QPlainTextEdit(parent)
{
    auto *document = new QTextDocument(this);
    document->setUndoRedoEnabled(false);
    log = new loglayout(document);
    document->setDocumentLayout(log);
    setDocument(document);
    pen = QTextCursor(document);
    setReadOnly(true);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    frame.setSingleShot(true);
    connect(&frame, &QTimer::timeout, this, &ircview::settle);
}

ircview::~ircview()
{
    if (editing)
        pen.endEditBlock();
}

void ircview::addLine(const QString &line)
{
    QStringView markup = line;
    while (markup.endsWith(u'\n') || markup.endsWith(u'\r'))
        markup.chop(1);
    if (!editing) {
        editing = true;
        const QTextCursor own = textCursor();
        selectedEnd = own.hasSelection() && own.selectionEnd() == pen.position() ? pen.position() : -1;
        pen.beginEditBlock();
        const qint64 wait = sinceFrame.isValid() ? frameMs - sinceFrame.elapsed() : 0;
        frame.start(static_cast<int>(std::max<qint64>(wait, 0)));
    }
    const richline rich(markup);
    // The format is said: otherwise it would be that of wherever the user's own cursor has been.
    if (!empty)
        pen.insertBlock(QTextBlockFormat(), QTextCharFormat());
    empty = false;
    log->addSpans(pen.position(), rich.spans());
    pen.insertText(rich.text(), QTextCharFormat());
}

void ircview::settle()
{
    if (editing)
        scrollToBottom();
}

void ircview::scrollToBottom()
{
    if (editing) {
        editing = false;
        pen.endEditBlock();
        keepSelection();
        frame.stop();
        sinceFrame.start();
    }
    // Lines are laid out when they come into view and may turn out taller than they were taken for: the
    // bottom moves while we go there, and the number of the bottom may stand for another line than it did
    // before.
    QScrollBar *bar = verticalScrollBar();
    bar->setValue(0);
    do
        bar->setValue(bar->maximum());
    while (bar->value() != bar->maximum());
}

void ircview::keepSelection()
{
    QTextCursor own = textCursor();
    if (selectedEnd < 0 || own.selectionEnd() != pen.position())
        return;
    const int position = std::min(own.position(), selectedEnd);
    own.setPosition(std::min(own.anchor(), selectedEnd));
    own.setPosition(position, QTextCursor::KeepAnchor);
    setTextCursor(own);
}

QMimeData *ircview::createMimeDataFromSelection() const
{
    auto *copied = new QMimeData;
    copied->setText(textCursor().selection().toPlainText().remove(richline::breakHere));
    return copied;
}

void ircview::resizeEvent(QResizeEvent *event)
{
    const bool atBottom = verticalScrollBar()->value() == verticalScrollBar()->maximum();
    QPlainTextEdit::resizeEvent(event);
    if (atBottom)
        scrollToBottom();
}

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
