// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Which letters of nicks and channels a server takes for the same.
enum class casemapping : quint8 {
    /// As Unicode says: what classic sessions go by, and those whose server names no mapping that we know.
    unicode,
    ascii,
    /// "{|}~" are the small "[\]^" (RFC 1459, 2.2).
    rfc1459,
    /// The same without "~" and "^".
    strictRfc1459,
};

/// `name` with its letters made small: two names are the same when this is.
QString folded(const QString &name, casemapping mapping);

/// Whether two names are the same.
bool sameName(const QString &a, const QString &b, casemapping mapping);

/// The mapping that a server calls `name` in its CASEMAPPING.
casemapping casemappingOf(QStringView name);
