// SPDX-License-Identifier: MIT
#include "ircmessage.h"

#include "ctcp.h"
#include "lineend.h"

namespace {

/// Reads a line word by word, as QTextStream does. White space is skipped in front of a word, not after it,
/// so a line that ends with white space has one more word, which is empty.
class wordreader
{
public:
    explicit wordreader(QStringView line) : rest(line) {}

    bool atEnd() const { return rest.isEmpty(); }

    QString next()
    {
        qsizetype start = 0;
        while (start < rest.size() && rest[start].isSpace())
            ++start;
        qsizetype end = start;
        while (end < rest.size() && !rest[end].isSpace())
            ++end;
        QString word = rest.sliced(start, end - start).toString();
        rest = rest.sliced(end);
        return word;
    }

private:
    QStringView rest;
};

} // namespace

ircmessage::ircmessage(const QString &line)
{
    wordreader words(withoutLineEnd(QStringView(line)));
    m_command = words.next();
    if (m_command.startsWith(u':')) {
        m_prefix = ircuser(m_command);
        m_command = words.next();
    }
    while (!words.atEnd())
        params.append(words.next());
    detectCtcp(false);
}

ircmessage ircmessage::tagged(const QString &line)
{
    ircmessage message;
    QStringView rest = withoutLineEnd(QStringView(line));
    const auto skipSpaces = [&rest] {
        while (rest.startsWith(u' '))
            rest = rest.sliced(1);
    };
    const auto nextWord = [&rest, &skipSpaces] {
        const qsizetype space = rest.indexOf(u' ');
        const QStringView word = space < 0 ? rest : rest.first(space);
        rest = rest.sliced(word.size());
        skipSpaces();
        return word;
    };
    skipSpaces();
    if (rest.startsWith(u'@'))
        message.m_tags = messagetags(nextWord().sliced(1).toString());
    if (rest.startsWith(u':'))
        message.m_prefix = ircuser(nextWord().toString());
    message.m_command = nextWord().toString();
    while (!rest.isEmpty() && !rest.startsWith(u':'))
        message.params.append(nextWord().toString());
    if (!rest.isEmpty())
        message.params.append(rest.toString().split(u' '));
    message.detectCtcp(true);
    return message;
}

void ircmessage::detectCtcp(bool mayLackEnd)
{
    if (m_command.compare(u"privmsg", Qt::CaseInsensitive) != 0 &&
        m_command.compare(u"notice", Qt::CaseInsensitive) != 0)
        return;
    if (paramCount() < 2 || !(mayLackEnd || params.last().endsWith(ctcpMark)))
        return;
    if (!paramsFrom(1, true).startsWith(ctcpMark))
        return;
    params[1].remove(ctcpMark);
    params.last().remove(ctcpMark);
    ctcp = true;
}

QString ircmessage::param(int i, bool stripColon) const
{
    if (i < 0 || i >= paramCount())
        return {};
    QString word = params.at(i);
    if (stripColon)
        ircmessage::stripColon(word);
    return word;
}

QString ircmessage::joinParams(int from, int count, bool stripColon) const
{
    QString joined;
    bool colonRemoved = !stripColon;
    for (int i = from; i < from + count; ++i) {
        QString word = param(i, false);
        if (!colonRemoved)
            colonRemoved = ircmessage::stripColon(word);
        if (i > from)
            joined += u' ';
        joined += word;
    }
    return joined;
}

QString ircmessage::paramsFrom(int from, bool stripColon) const
{
    return joinParams(from, paramCount() - from, stripColon);
}

bool ircmessage::stripColon(QString &s)
{
    if (!s.startsWith(u':'))
        return false;
    s.remove(0, 1);
    return true;
}
