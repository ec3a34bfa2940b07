// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <QString>

/// How the user likes the window, kept from one start to the next in a group of the settings file.
struct preferences
{
    /// Points; 0 is the desktop's own size. Of the text in all views.
    int fontSize = 0;
    /// Of the window where it does not fill the screen; invalid when it was never set.
    QSize windowSize;
    bool userListShown = true;
    /// Whether the views show the time of each line.
    bool times = false;
    /// So many lines a view keeps; 0 keeps all.
    int scrollback = 0;

    /// What the file holds; where it holds nothing sensible, the defaults.
    static preferences load(const QString &config);
    /// False if the file cannot be written.
    bool save(const QString &config) const;

    /// The size of text that comes `steps` after `size`, within what can be read and fits on a screen.
    static int stepped(int size, int steps);

    friend bool operator==(const preferences &, const preferences &) = default;
};
