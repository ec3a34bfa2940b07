// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class connection;

/// The slash commands, all in one table.
namespace usercommands {

/// What a tab is for.
enum class place { server, query, channel };

/// Does what `text`, typed in the tab called `target`, says, and writes one line at most. A word that is for channels does
/// nothing in a tab that is none. An unknown word does nothing in a classic session; else it goes to the server as it is.
/// False, and nothing is done, if `conn` knows that this would not reach the server.
bool run(connection &conn, const QString &text, const QString &target);

/// The words that do something in such a tab, as they are typed: "/join". `more` are those of sessions by address, too.
QStringList wordsIn(place where, bool more);

/// Whether `text` closes its tab: anything that begins with "/close" does.
bool isClose(const QString &text);
/// Whether `text` is "/me ACTION"; if so, sets `action`.
bool isAction(const QString &text, QString *action);
/// The first word of a command, in capitals; `args` becomes what follows it.
QString wordOf(const QString &text, QString *args);

} // namespace usercommands
