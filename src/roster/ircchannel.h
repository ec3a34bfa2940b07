// SPDX-License-Identifier: MIT
#pragma once

#include "ircuserlist.h"
#include "isupport.h"

#include <QObject>

class ircmode;

/// A channel's name and its roster: the members with their ranks, in the order in which they are shown.
///
/// The roster is sorted after every operation except names().
class ircchannel : public QObject
{
    Q_OBJECT

public:
    /// `rules` are the server's rules; they must outlive the channel.
    explicit ircchannel(QString name, const isupport &rules = isupport::classic());

    const isupport &rules() const { return m_rules; }
    QString channelName() const { return m_channelName; }
    const ircuserlist *roster() const { return &m_roster; }
    /// The first member with this nick, ignoring case, or null. Valid until the roster changes.
    const ircchanneluser *findUser(const QString &nick) const;

    void join(const ircuser *u);
    void remove(const ircuser *u);
    void nick(const QString &oldnick, const QString &newnick);
    /// Removes those of `nicks` that are here; how many these were.
    qsizetype removeAll(const QStringList &nicks);
    /// Adds the members that `masks` name, each with the signs of its ranks in front; how many these were.
    qsizetype joinAll(const QStringList &masks);
    /// Nobody is here, as far as we know: a listing follows.
    void clear();
    /// Applies one letter of a MODE line to the member that its argument names.
    void mode(const ircmode *m);
    /// Adds one chunk of a NAMES listing (RFC 2812, 353); the first one replaces the roster. Removes the rank
    /// characters from the entries of `list`.
    void names(QStringList *list);
    /// Ends a NAMES listing (RFC 2812, 366).
    void endNames();

private:
    /// Reads a nick or a mask with the signs of its ranks in front, and removes the signs.
    ircchanneluser takeRanks(QString *entry) const;
    void add(const ircchanneluser &user);
    /// Sorts the roster if a listing in progress has left it unsorted.
    void keepSorted();

    QString m_channelName;
    const isupport &m_rules;
    bool namesInProgress = false;
    /// A listing has added members since the last sort.
    bool unsorted = false;
    ircuserlist m_roster;
};
