// SPDX-License-Identifier: MIT
#include "ircuser.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype maxNick = 128;

} // namespace

ircuser::ircuser(QString mask)
{
    if (mask.startsWith(u':'))
        mask.remove(0, 1);
    const qsizetype bang = mask.indexOf(u'!');
    if (bang < 0) {
        setNick(mask);
        return;
    }
    const qsizetype at = mask.indexOf(u'@', bang);
    setNick(mask.left(bang));
    m_user = mask.mid(bang + 1, at < 0 ? -1 : at - bang - 1);
    if (at >= 0)
        m_host = mask.mid(at + 1);
}

void ircuser::setNick(const QString &nick)
{
    m_nick = nick;
    m_key = nick.toLower();
}

bool ircuser::isNamedIn(const QString &said) const
{
    // The server says what our nick is, and looking for a long one takes long.
    if (m_nick.isEmpty() || m_nick.size() > maxNick || !said.contains(m_nick, Qt::CaseInsensitive))
        return false;
    // The number of a colour is not part of a word.
    static const QRegularExpression codes(u"\\x{3}\\d{0,2}(,\\d{0,2})?"_s);
    const QString text = QString(said).replace(codes, u" "_s);
    // RFC 2812, 2.3.1: what a nick may consist of.
    const auto continues = [](QChar c) {
        return c.isLetterOrNumber() || QStringView(u"-[]\\`_^{|}").contains(c);
    };
    for (qsizetype at = text.indexOf(m_nick, 0, Qt::CaseInsensitive); at >= 0;
         at = text.indexOf(m_nick, at + 1, Qt::CaseInsensitive)) {
        const qsizetype end = at + m_nick.size();
        if ((at == 0 || !continues(text[at - 1])) && (end == text.size() || !continues(text[end])))
            return true;
    }
    return false;
}
