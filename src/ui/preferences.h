// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <QString>

/// How the user likes the window, kept from one start to the next in a group of the settings file.
struct preferences
{
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

    /// Reads the file. A missing or impossible value becomes the default.
    static preferences load(const QString &config);
    /// False if the file cannot be written.
    bool save(const QString &config) const;

    /// The member list is so wide in a small window, and never narrower.
    static constexpr int minUserListWidth = 70;
    static constexpr int maxUserListWidth = 2000;

    /// The font size `steps` points above `size`, within the minimum and the maximum.
    static int stepped(int size, int steps);

    friend bool operator==(const preferences &, const preferences &) = default;
};
