// SPDX-License-Identifier: MIT
#pragma once

#include "ircuserlist.h"
#include "isupport.h"
#include "manners.h"

#include <QAbstractListModel>
#include <QPixmap>

#include <vector>

/// The rows of a member list: a copy of a roster, which costs nothing until the roster changes.
class rostermodel : public QAbstractListModel
{
    Q_OBJECT

public:
    /// The complete nick.
    static constexpr int NickRole = Qt::UserRole;
    /// The highest rank, an isupport::rank as an int.
    static constexpr int RankRole = Qt::UserRole + 1;

    explicit rostermodel(QObject *parent);

    const ircuserlist &roster() const { return members; }
    void setMembers(const ircuserlist &roster);
    /// From now on, goes by these manners of a session, which must outlive it: whether a nick is text that cannot leave
    /// its place.
    void follow(const manners &sessionManner) { manner = &sessionManner; }
    int rowCount(const QModelIndex &parent = {}) const override;
    /// The nick (display), the ball of the highest rank (decoration), both in words (tool tip and screen
    /// reader).
    QVariant data(const QModelIndex &index, int role) const override;

private:
    QString shown(const ircchanneluser &member) const;

    ircuserlist members;
    const manners *manner;
    /// By isupport::rank.
    std::vector<QPixmap> balls;
};
