// SPDX-License-Identifier: MIT
#pragma once

#include "ircuserlist.h"

#include <QAbstractListModel>
#include <QPixmap>

/// The rows of a member list: a copy of a roster, which costs nothing until the roster changes.
class rostermodel : public QAbstractListModel
{
    Q_OBJECT

public:
    /// The nick, however long.
    static constexpr int NickRole = Qt::UserRole;

    explicit rostermodel(QObject *parent);

    void setMembers(const ircuserlist &roster);
    int rowCount(const QModelIndex &parent = {}) const override;
    /// The nick (display) and the ball of the highest rank (decoration).
    QVariant data(const QModelIndex &index, int role) const override;

private:
    ircuserlist members;
    QPixmap opIcon;
    QPixmap halfopIcon;
    QPixmap voiceIcon;
};
