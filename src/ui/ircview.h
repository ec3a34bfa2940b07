// SPDX-License-Identifier: MIT
#pragma once

#include "logview.h"

class QDateTime;
class ircmode;
struct manners;

/// The conversation of a tab: what each event of IRC looks like in the log.
class ircview : public logview
{
    Q_OBJECT

public:
    explicit ircview(QWidget *parent);

    /// How the session behaves: whether fields are text, whatever is in them.
    const manners *manner;
    /// The next line was said long ago, at this time: it shows that.
    void stampNext(const QDateTime &time);
    /// The next line is talk for us: it has a tint, and the nick in front is bold.
    void markNext() { mark = linestore::forUs; }
    /// Shows lines of an earlier conversation, as plain text: each with its time, under its date.
    void showPast(const QList<pastline> &past);

    /// The next line is not shown, if `on`.
    void hideNext(bool on) { hidden = on; }

    // Each shows one event. What people say goes through ircToHtml(); everything else is added unchanged. Where fields
    // are text, both go through moderntext.
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
    /// Many people have left or joined at once, as `text` says.
    void crowd(bool left, const QString &text);

    /// What somebody said, as rich text: "<" and ">" escaped, bold (U+0002), underline (U+001F), colour
    /// (U+0003) and plain (U+000F) as tags.
    static QString ircToHtml(const QString &text);

Q_SIGNALS:
    /// A new line was shown: the last of lines(). Not for hidden lines, nor for those of an earlier conversation.
    void lineShown();

private:
    void showLine(const QString &line);
    // A field as markup: the nick of who says something, any nick, what somebody said, any other text of the server's.
    QString speaker(const QString &nick) const;
    QString name(const QString &nick) const;
    QString said(const QString &text) const;
    QString field(const QString &text) const;

    bool hidden = false;
    /// What the next line begins with, if it was said long ago, and when that was, in seconds since 1970.
    QString stamp;
    qint64 stampedAt = 0;
    linestore::mark mark = linestore::unmarked;
};
