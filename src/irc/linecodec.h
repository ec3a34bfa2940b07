// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// How the bytes of a line and its text become each other. A session has one of these for all its lines.
struct linecodec
{
    /// Reads a line from the server, with or without its line end.
    QString (*text)(const QByteArray &line) = nullptr;
    /// What goes out for a text.
    QByteArray (*bytes)(const QString &text) = nullptr;

    /// One character a byte. What Latin-1 does not have leaves as "?".
    static const linecodec latin1;
    /// Lines out are UTF-8, and so are lines in. One that is not is Latin-1; but tags are UTF-8 in any case
    /// (IRCv3, message-tags), and a letter that is unfinished at the end was cut there by a server and is left
    /// out.
    static const linecodec utf8;
};
