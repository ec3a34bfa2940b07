// SPDX-License-Identifier: MIT
//
// A line from the server is split into sender, command and words, and nothing is lost.

#include "fuzz.h"

#include "ircmessage.h"

#include <algorithm>

static void check(QString line)
{
    const ircmessage message(line);
    const ircuser &from = *message.prefix();
    const int count = message.paramCount();
    QString joined = from.nick().isNull() ? QString() : u':' + from.nick();
    joined += from.user().isNull() ? QString() : u'!' + from.user();
    joined += (from.host().isNull() ? QString() : u'@' + from.host()) + u' ' + message.command();
    for (int i = 0; i < count; ++i) {
        const QString word = message.param(i, false);
        require(std::none_of(word.begin(), word.end(), [](QChar c) { return c.isSpace(); }),
                "words are words");
        require(!word.isEmpty() || i == count - 1 || (message.isCtcp() && i == 1), "words are not empty");
        joined += u' ' + word;
    }
    require(joined.endsWith(message.allParams(false)), "one space joins the words");
    require(message.joinParams(0, 1, true) == message.param(0, true), "a word alone is that word");
    if (message.isCtcp()) {
        require(!message.param(1, true).contains(u'\1'), "the first mark of a CTCP is gone");
        require(!message.param(count - 1, true).contains(u'\1'), "the last mark of a CTCP is gone");
        line.remove(u'\1');
        joined.remove(u'\1');
    }
    require(joined.simplified() == line.simplified(), "the words make up the line");
}

void fuzz(const QByteArray &input)
{
    for (const QByteArray &line : input.split('\n'))
        check(QString::fromLatin1(line + '\n'));
}
