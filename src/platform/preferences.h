// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

/// How the user likes the program, kept from one start to the next in two groups of the settings file.
struct preferences
{
    // The group "Window":

    /// The size of the text in all views, in points; 0 means the desktop's own size.
    int fontSize = 0;
    /// The size of the window when it does not fill the screen; invalid if it was never set.
    QSize windowSize;
    bool userListShown = true;
    /// The width of the member list in a wide window, in pixels.
    int userListWidth = minUserListWidth;
    /// Whether the views show the time of each line.
    bool times = false;
    /// So many lines a view keeps; 0 keeps all.
    int scrollback = 0;

    // The group "Chat":

    /// Words that mark a line as one for the user, as the nick does.
    QStringList highlights;
    /// Whether the desktop shows notifications of lines for the user.
    bool notifies = true;
    /// Whether logs are written of what the tabs show.
    bool logs = false;
    /// Whether the connect dialog proposes the last session, see lastsession.
    bool reopens = false;
    /// The masks of ignored people.
    QStringList ignored;

    /// The member list is so wide in a small window, and never narrower.
    static constexpr int minUserListWidth = 70;
    static constexpr int maxUserListWidth = 2000;
    static constexpr int minFont = 4;
    static constexpr int maxFont = 40;
    /// In words, and in characters of a word. Every line that somebody says is searched for all of them.
    static constexpr qsizetype maxHighlights = 100;
    static constexpr qsizetype maxHighlight = 100;

    /// Reads the file. A missing or impossible value becomes the default.
    static preferences load(const QString &config);
    /// Writes what differs from `before`, so that another program keeps what it changed: the group "Window" as
    /// a whole, each key of "Chat" by itself. False if the file cannot be written.
    bool save(const QString &config, const preferences &before) const;

    /// The font size `steps` points above `size`, within the minimum and the maximum.
    static int stepped(int size, int steps);
    /// The words of a text that has spaces or commas between them, each once; without those beyond the maximum.
    static QStringList words(const QString &text);

    friend bool operator==(const preferences &, const preferences &) = default;
};
