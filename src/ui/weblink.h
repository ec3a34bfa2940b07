// SPDX-License-Identifier: MIT
#pragma once

#include <QUrl>

/// The web address (http or https, RFC 3986) at `position` in `text`; invalid if there is none. Punctuation
/// at its end belongs to the sentence around it, and so does a closing bracket that was opened before it.
QUrl weblink(const QString &text, qsizetype position);
