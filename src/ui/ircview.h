// SPDX-License-Identifier: MIT
#pragma once

#include "logview.h"

class ircmode;

/// The conversation of a tab: what each event of IRC looks like in the log.
class ircview : public logview
{
    Q_OBJECT

public:
    using logview::logview;

    // Each shows one event. What people say goes through ircToHtml(); everything else is added unchanged.
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
};
