// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QMap>
#include <QStringList>

class ircmessage;
class isupport;

/// Who has left because two servers have parted, or come back because they have met again (IRCv3, batch and netsplit).
struct netbatch
{
    bool left = false;
    /// The names of the two servers.
    QStringList servers;
    /// Who has left.
    QStringList nicks;
    /// Who has come to `channel`, as masks, each with the signs of its ranks in front as in a NAMES reply.
    QStringList joinedIn(const QString &channel, const isupport &rules) const;

    /// The same by the folded names of channels.
    QMap<QString, QStringList> joined;
};

/// Gathers the lines of such batches while they are open.
class netbatches
{
public:
    /// Whether `message` opens a netsplit or netjoin, or belongs to an open one: then nothing else need be done with it.
    bool takes(const ircmessage &message, const isupport &rules);
    /// Whether `message` ends one; if so, `whole` becomes what it held.
    bool ends(const ircmessage &message, netbatch *whole);
    void clear() { *this = {}; }

private:
    struct openbatch
    {
        netbatch whole;
        /// By channel and nick, folded: the place of someone in the list of that channel.
        QHash<QString, qsizetype> places;
    };

    bool takesQuit(openbatch *batch, const ircmessage &message);
    bool takesJoin(openbatch *batch, const ircmessage &message, const isupport &rules);
    /// Takes a MODE line if all that it does is to give ranks to those who have come.
    static bool takesRanks(openbatch *batch, const ircmessage &message, const isupport &rules);
    bool isFull() const;
    void count(const ircmessage &message);

    QMap<QString, openbatch> open;
    /// In all open ones.
    int people = 0;
    qsizetype bytes = 0;
};
