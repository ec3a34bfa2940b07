// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class connection;

/// The slash commands, all in one table.
namespace usercommands {

/// What a tab is for.
enum class place { server, query, channel };

/// Runs the command `text`, which was typed in the tab named `target`. Sends at most one line. An unknown
/// command does nothing, nor does a command for channels in another kind of tab.
void run(connection &conn, const QString &text, const QString &target);

/// The commands that work in such a tab, as they are typed: "/join".
QStringList wordsIn(place where);

/// Whether `text` closes its tab: anything that begins with "/close" does.
bool isClose(const QString &text);
/// Whether `text` is "/me ACTION"; if so, sets `action`.
bool isAction(const QString &text, QString *action);

} // namespace usercommands
