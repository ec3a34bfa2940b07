// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class connection;

/// What the user may type behind a "/": the one table of these words.
namespace usercommands {

/// What a tab is for.
enum class place { server, query, channel };

/// Does what `text`, typed in the tab called `target`, says, and writes one line at most. A word that is for channels does
/// nothing in a tab that is none. An unknown word does nothing in a classic session; else it goes to the server as it is.
/// False, and nothing is done, if `conn` knows that this would not reach the server.
bool run(connection &conn, const QString &text, const QString &target);

/// The words that do something in such a tab, as they are typed: "/join". `more` are those of sessions by address, too.
QStringList wordsIn(place where, bool more);

/// Whether `text` asks to close its tab; all that begins with the word does.
bool isClose(const QString &text);
/// Whether `text` says what we do; if so, `action` becomes what that is.
bool isAction(const QString &text, QString *action);
/// Whether `text` opens a tab for talk with someone (sessions by address); if so, `nick` and `said` become whom and what is
/// said at once.
bool isQuery(const QString &text, QString *nick, QString *said);

} // namespace usercommands
