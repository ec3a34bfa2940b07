// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

class ircuser;

/// Cuts a text for a server that takes only so much in a line, and would cut it itself where it likes.
namespace textsplitter {

/// So many pieces one text may have.
inline constexpr qsizetype maxPieces = 8;

/// So many bytes of text fit into "`command` `target` :" once the server has put `sender` in front of it.
/// Without a host in it the longest is expected. `lineLength` is the server's, with CR and LF (RFC 1459, 2.3:
/// 512).
qsizetype room(qsizetype lineLength, const ircuser &sender, const QString &command, const QString &target);

/// The pieces of `text`, of at most `maxBytes` bytes of UTF-8 each: cut at a space near the end, which is left
/// out, else between letters as people see them. Empty when maxPieces are not enough.
QStringList split(const QString &text, qsizetype maxBytes);

} // namespace textsplitter
