// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class connection;

/// What the user may type behind a "/": the one table of these words.
namespace usercommands {

/// What a tab is for.
enum class place { server, query, channel };

/// Does what `text`, typed in the tab called `target`, says, and writes one line at most. An unknown word does nothing,
/// and neither does one that is for channels in a tab that is none.
void run(connection &conn, const QString &text, const QString &target);

/// The words that do something in such a tab, as they are typed: "/join".
QStringList wordsIn(place where);

/// Whether `text` asks to close its tab; all that begins with the word does.
bool isClose(const QString &text);
/// Whether `text` says what we do; if so, `action` becomes what that is.
bool isAction(const QString &text, QString *action);

} // namespace usercommands
