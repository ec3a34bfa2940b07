// SPDX-License-Identifier: MIT
#pragma once

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

    bool isAccepted() const { return found == nothing; }
    /// Whether the user may decide to trust the certificate all the same.
    bool mayBeTrusted() const { return found == changed || found == unknownIssuer; }
    /// Whether there is a pin that is no longer needed.
    bool replacesPin() const { return verified && pinned; }
    /// Why there is no connection; empty when the certificate is accepted.
    QString text() const;

    /// A SHA-256 as people compare it: "AA:BB:…".
    static QString fingerprintOf(const QByteArray &sha256);
    /// Under which a pin is kept.
    static QString pinKey(const QString &host, quint16 port);

private:
    /// In the order in which one of several is told.
    enum fault : quint8 { nothing, changed, unknownIssuer, otherName, expired, notYetValid };

    /// What an error of Qt's is to us.
    static fault faultOf(const QSslError &error);

    bool verified;
    bool pinned;
    fault found = nothing;
    QString fingerprint;
};
