// SPDX-License-Identifier: MIT
#include "certificatecheck.h"

#include <algorithm>
#include <utility>

namespace {

/// What an error of Qt's is to us. Of several faults the first in the order of linkfault::kind is told.
linkfault::kind faultOf(const QSslError &error)
{
    switch (error.error()) {
    case QSslError::HostNameMismatch:
        return linkfault::kind::otherName;
    case QSslError::CertificateExpired:
        return linkfault::kind::expired;
    case QSslError::CertificateNotYetValid:
        return linkfault::kind::notYetValid;
    default: // there are many ways not to be vouched for
        return linkfault::kind::untrusted;
    }
}

} // namespace

certificatecheck::certificatecheck(const QList<QSslError> &errors, QString fingerprintSeen,
                                   const QString &pin)
    : verified(errors.isEmpty()), pinned(!pin.isEmpty()), fingerprint(std::move(fingerprintSeen))
{
    if (verified || (pinned && fingerprint == pin))
        return;
    found = linkfault::kind::notYetValid;
    for (const QSslError &error : errors)
        found = std::min(found, faultOf(error));
    if (pinned)
        found = linkfault::kind::pinChanged;
}

QString certificatecheck::fingerprintOf(const QByteArray &sha256)
{
    return QString::fromLatin1(sha256.toHex(':').toUpper());
}

QString certificatecheck::pinKey(const QString &host, quint16 port)
{
    return host + u':' + QString::number(port);
}
