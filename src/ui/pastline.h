// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A line of an earlier conversation. logview takes its text as rich text, ircview as plain text.
struct pastline
{
    /// When it was said, in seconds since 1970 (UTC).
    qint64 time = 0;
    QString text;
};
