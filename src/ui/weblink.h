// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QUrl>

/// A web address in a text: so many UTF-16 units from `start` on.
struct weblinkrange
{
    qsizetype start = 0;
    qsizetype length = 0;
    QUrl url;
};

/// The web addresses (http or https, RFC 3986) in `text`, in its order. Punctuation at the end of one belongs to the
/// sentence around it, and so does a closing bracket that was opened before it. At most the first 64 are found.
QList<weblinkrange> weblinks(const QString &text);

/// The one at `position`; invalid if there is none.
QUrl weblink(const QString &text, qsizetype position);
