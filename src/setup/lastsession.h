// SPDX-License-Identifier: MIT
#pragma once

#include "ircaddress.h"

#include <QString>
#include <QStringList>

/// The session by address that was connected when the window closed last, for those who want to start where they were.
/// It holds no password and no key of a channel.
struct lastsession
{
    /// Its own channels do not count. Invalid if there was no such session.
    ircaddress address;
    /// 0 stands for that of the address.
    quint16 port = 0;
    QString nick;
    QStringList channels;

    /// Reads the settings file; what is impossible is no session.
    static lastsession load();
    /// Writes the group "Reopen" of the settings file. Without a session it removes the group, and touches nothing if
    /// there is none.
    void save() const;
    /// The address with port and channels, as a user could have typed it. Channels that make it too long are left out.
    QString text() const;
};
