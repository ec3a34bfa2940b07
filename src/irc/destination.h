// SPDX-License-Identifier: MIT
#pragma once

#include "ircaddress.h"

/// Where a session by address goes, and what it needs there besides nick and channels.
struct destination
{
    ircaddress address;
    /// That of the preset, until the connection has chosen one.
    quint16 port = 0;
    /// Of the account that the address names, or of the server where it names none.
    QString password;
    /// The nick to take where ours is taken; may be empty.
    QString altNick;
    /// A PEM file with key and certificate to log in with; may be empty.
    QString certificateFile;
    /// What is typed for the user once the server has welcomed us.
    QStringList perform;
    /// Channels besides those of the address.
    QStringList channels;
};
