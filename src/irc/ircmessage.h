// SPDX-License-Identifier: MIT
#pragma once

#include "ircuser.h"
#include "messagetags.h"

#include <QStringList>

/// One line from the server, split into sender, command and words (RFC 1459, 2.3.1).
///
/// The trailing parameter is split at white space like all others, and its first word keeps the ":".
/// paramsFrom() joins it again, with single spaces. Any text is a message: there are no errors, and a missing
/// word is an empty string.
class ircmessage
{
public:
    /// Splits `line`, with or without its line end. In a CTCP message (a PRIVMSG or NOTICE whose text is
    /// between two U+0001) those two characters are removed, and isCtcp() is true.
    explicit ircmessage(const QString &line);
    /// Reads a line of a session by address. It may begin with tags (IRCv3, message-tags), words end at U+0020
    /// alone, and the trailing parameter has one more word for every space in it, so that paramsFrom() gives it
    /// back as it was said. A CTCP message may lack its last U+0001: servers cut long lines.
    static ircmessage tagged(const QString &line);

    /// The sender; empty when the line had none. Never null; lives as long as the message.
    ircuser *prefix() { return &m_prefix; }
    const ircuser *prefix() const { return &m_prefix; }
    const messagetags &tags() const { return m_tags; }
    /// The command word or three-digit reply, as received.
    QString command() const { return m_command; }
    bool isCtcp() const { return ctcp; }

    int paramCount() const { return static_cast<int>(params.size()); }
    /// Word `i` after the command, without its leading ":" if `stripColon` is set.
    QString param(int i, bool stripColon) const;
    /// `count` words from word `from` on, joined by one space. With `stripColon` the first word that starts
    /// with ":" loses it; later ones keep theirs.
    QString joinParams(int from, int count, bool stripColon) const;
    QString allParams(bool stripColon) const { return joinParams(0, paramCount(), stripColon); }
    QString paramsFrom(int from, bool stripColon) const;

    /// Removes one leading ":" from `s`; false if there is none.
    static bool stripColon(QString &s);

private:
    ircmessage() = default;
    /// `mayLackEnd`: whether it is one, too, without the second U+0001.
    void detectCtcp(bool mayLackEnd);

    messagetags m_tags;
    ircuser m_prefix;
    QString m_command;
    QStringList params;
    bool ctcp = false;
};
