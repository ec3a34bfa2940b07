// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QStringList>

class ircmessage;

/// Who has left because two servers have parted, or come back because they have met again (IRCv3, batch and netsplit).
struct netbatch
{
    bool left = false;
    /// The names of the two servers.
    QStringList servers;
    /// Who has left.
    QStringList nicks;
    /// Who has come, as masks, by the channel in lower case.
    QMap<QString, QStringList> joined;
};

/// Gathers the lines of such batches while they are open.
class netbatches
{
public:
    /// Whether `message` opens a netsplit or netjoin, or belongs to an open one: then nothing else need be done with it.
    bool takes(const ircmessage &message);
    /// Whether `message` ends one; if so, `whole` becomes what it held.
    bool ends(const ircmessage &message, netbatch *whole);
    void clear() { *this = {}; }

private:
    QMap<QString, netbatch> open;
    /// In all open ones.
    int people = 0;
    qsizetype bytes = 0;
};
