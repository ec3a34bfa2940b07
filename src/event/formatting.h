// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

/// How characters look that somebody has formatted. Colours are 0xffrrggbb; 0 is the view's own.
struct textlook
{
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strike = false;
    /// Text and background have changed places.
    bool reverse = false;
    quint32 colour = 0;
    quint32 background = 0;

    friend bool operator==(const textlook &, const textlook &) = default;
};

/// Characters that look alike, one behind the other.
struct textrun
{
    QString text;
    textlook look;
};

/// What somebody said in a session by address, with the formatting codes of today: bold, italics, underline,
/// strike-through, reverse, 99 colours and hexadecimal ones, each with a background, and reset. Monospace is text as
/// it is.
///
/// What comes out stays in its place whatever went in: it has one line, no control characters and none that no font
/// has, and every direction that it opens is closed. If it may be read from right to left, it is isolated (UAX #9): what
/// stands before and behind it keeps its place.
QList<textrun> formatted(const QString &said);

/// The same for a name, which has no formatting: codes are left out.
QString unformatted(const QString &name);
