// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QTimer>

class ircmode;
class loglayout;

/// The conversation of a tab: read-only, one paragraph an event, growing at the bottom, where it always is.
///
/// A line's text is in the document when addLine() returns. Layout, scrolling and painting wait for the next
/// frame, once for all lines that came before it: that is when control is back in the event loop or, while
/// lines keep coming, a moment later.
class ircview : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit ircview(QWidget *parent);
    ~ircview() override;

    /// Appends a line of rich text, less the line ends at its end; see richline for what is read of it.
    void addLine(const QString &line);
    void scrollToBottom();

    // Each shows one event. What people say goes through ircToHtml(); all else is inserted as it came.
    void privmsg(const QString &nick, const QString &text);
    void action(const QString &nick, const QString &text);
    void notice(const QString &nick, const QString &text);
    void message(const QString &text);
    void join(const QString &nick);
    void part(const QString &nick, const QString &reason);
    void quit(const QString &nick, const QString &reason);
    void kick(const QString &kicker, const QString &kicked, const QString &reason);
    void modes(const ircmode *m);
    void nick(const QString &oldnick, const QString &newnick);

    /// What somebody said, as rich text: "<" and ">" escaped, bold (U+0002), underline (U+001F), colour
    /// (U+0003) and plain (U+000F) as tags.
    static QString ircToHtml(const QString &text);

protected:
    /// What was said, as plain text.
    QMimeData *createMimeDataFromSelection() const override;
    void resizeEvent(QResizeEvent *event) override;

private:
    /// Ends the edit that the lines since the last frame are in, and shows them.
    void settle();
    /// Takes back what a selection up to the end of the document has grown by.
    void keepSelection();

    loglayout *log;
    /// Writes at the end of the document, where it stays by itself.
    QTextCursor pen;
    bool empty = true;
    bool editing = false;
    QTimer frame;
    QElapsedTimer sinceFrame;
    /// Where the document ended before the edit, if what the user had selected ended there; else -1.
    int selectedEnd = -1;
};
