// SPDX-License-Identifier: MIT
#include "textsplitter.h"

#include "ircuser.h"

#include <QTextBoundaryFinder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// A space so close to the end of a piece, in bytes, is where it is cut.
constexpr qsizetype nearEnd = 40;
/// The longest that a server makes of what it has not told us yet: "~" and a user name, a host (RFC 1035).
constexpr qsizetype longestUser = 10;
constexpr qsizetype longestHost = 63;

qsizetype bytesOf(QStringView text)
{
    return text.toUtf8().size();
}

/// So many of the characters of `text` fit into `maxBytes`, with no code point cut.
qsizetype fitting(QStringView text, qsizetype maxBytes)
{
    qsizetype end = 0;
    for (qsizetype bytes = 0; end < text.size();) {
        const bool pair =
            text[end].isHighSurrogate() && end + 1 < text.size() && text[end + 1].isLowSurrogate();
        bytes += bytesOf(text.sliced(end, pair ? 2 : 1));
        if (bytes > maxBytes)
            break;
        end += pair ? 2 : 1;
    }
    return end;
}

/// Where a piece ends that may have `most` of the characters of `text`, which has more.
qsizetype cut(QStringView text, qsizetype most)
{
    const qsizetype space = text.first(most + 1).lastIndexOf(u' ');
    if (space > 0 && bytesOf(text.sliced(space, most - space)) <= nearEnd)
        return space;
    QTextBoundaryFinder letters(QTextBoundaryFinder::Grapheme, text.data(), text.size());
    letters.setPosition(most);
    const qsizetype boundary = letters.isAtBoundary() ? most : letters.toPreviousBoundary();
    return boundary > 0 ? boundary : most;
}

} // namespace

qsizetype textsplitter::room(qsizetype lineLength, const ircuser &sender, const QString &command,
                             const QString &target)
{
    const bool known = !sender.host().isEmpty();
    const qsizetype user = known ? bytesOf(sender.user()) : longestUser;
    const qsizetype host = known ? bytesOf(sender.host()) : longestHost;
    const qsizetype mask = bytesOf(sender.nick()) + user + host + 4; // ":", "!", "@" and a space
    return lineLength - 2 - mask - bytesOf(QString(command + u' ' + target + u" :"));
}

QStringList textsplitter::split(const QString &text, qsizetype maxBytes)
{
    if (text.size() > maxPieces * maxBytes)
        return {};
    QStringList pieces;
    QStringView rest(text);
    do {
        const qsizetype most = fitting(rest, maxBytes);
        if (pieces.size() == maxPieces || (most == 0 && !rest.isEmpty()))
            return {};
        const qsizetype end = most == rest.size() ? most : cut(rest, most);
        pieces.append(rest.first(end).toString());
        rest = rest.sliced(end);
        if (rest.startsWith(u' '))
            rest = rest.sliced(1);
    } while (!rest.isEmpty());
    return pieces;
}
