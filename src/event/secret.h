// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// What may be written down of a `text` that the user typed: a password in it, with all that follows it, becomes "***".
///
/// `target` is to whom the text is said. To a service, such as NickServ, a text that begins with a word like IDENTIFY counts
/// as one with a password, and so does one with "pass" in it. To others, only a text counts that was probably meant for a
/// service, such as " /msg NickServ identify secret". If `target` is empty, `text` is a line for the server, such as
/// "PASS secret". A text that begins with "/" is a command.
QString withoutSecrets(const QString &target, const QString &text);
