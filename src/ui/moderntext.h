// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The markup that richline reads for what strangers wrote in a session by address: text in every case, never markup
/// of theirs, which opens nothing that it does not close.
namespace moderntext {

/// What was said: a message, a topic, a reason.
QString said(const QString &text);
/// A nick, or the name of a channel.
QString name(const QString &text);

} // namespace moderntext
