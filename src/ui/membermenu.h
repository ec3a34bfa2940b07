// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>

class ircchanneluser;

/// What the user can ask for, about a member of a channel.
enum class memberaction { query, whois, ignore, op, deop, voice, devoice, kick };

/// The menu of a member: the nick, and below it what the user may ask for. Show it with popup(), which runs no event loop
/// of its own; it deletes itself when it has closed.
class membermenu : public QMenu
{
    Q_OBJECT

public:
    /// What the menu offers depends on these.
    struct circumstances
    {
        /// The commands that came later exist.
        bool moreCommands = false;
        bool weAreOperator = false;
        /// The member is ourselves.
        bool ourselves = false;
    };

    membermenu(const ircchanneluser &member, circumstances when, QWidget *parent);

Q_SIGNALS:
    void chosen(memberaction what);
};
