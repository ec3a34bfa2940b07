// SPDX-License-Identifier: MIT
#pragma once

#include "linkfault.h"

#include <QList>
#include <QSslError>
#include <QString>

/// Whether a server's certificate is taken, and what the user is told otherwise.
///
/// One that the system's authorities vouch for is. Any other must be the very one that the user has trusted:
/// its fingerprint is the pin, which is kept for each host and port.
class certificatecheck
{
public:
    /// `errors` is what verification found, `fingerprint` that of the certificate, `pin` that of the one that
    /// the user has trusted for this host and port, or empty.
    certificatecheck(const QList<QSslError> &errors, QString fingerprint, const QString &pin);

    bool isAccepted() const { return found == linkfault::kind::none; }
    /// Why there is no connection; of no kind when the certificate is accepted.
    linkfault fault() const { return linkfault(found, {}, 0, fingerprint); }
    /// Whether there is a pin that is no longer needed.
    bool replacesPin() const { return verified && pinned; }

    /// A SHA-256 as people compare it: "AA:BB:…".
    static QString fingerprintOf(const QByteArray &sha256);
    /// Under which a pin is kept.
    static QString pinKey(const QString &host, quint16 port);

private:
    bool verified;
    bool pinned;
    linkfault::kind found = linkfault::kind::none;
    QString fingerprint;
};
