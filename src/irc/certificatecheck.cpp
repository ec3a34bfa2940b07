// SPDX-License-Identifier: MIT
#include "certificatecheck.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

certificatecheck::certificatecheck(const QList<QSslError> &errors, QString fingerprintSeen,
                                   const QString &pin)
    : verified(errors.isEmpty()), pinned(!pin.isEmpty()), fingerprint(std::move(fingerprintSeen))
{
    if (verified || (pinned && fingerprint == pin))
        return;
    found = notYetValid;
    for (const QSslError &error : errors)
        found = std::min(found, faultOf(error));
    if (pinned)
        found = changed;
}

certificatecheck::fault certificatecheck::faultOf(const QSslError &error)
{
    switch (error.error()) {
    case QSslError::HostNameMismatch:
        return otherName;
    case QSslError::CertificateExpired:
        return expired;
    case QSslError::CertificateNotYetValid:
        return notYetValid;
    default: // there are many ways not to be vouched for
        return unknownIssuer;
    }
}

QString certificatecheck::text() const
{
    switch (found) {
    case nothing:
        break;
    case changed:
        return u"Not connected: the certificate has CHANGED since you trusted it. SHA-256 "_s + fingerprint +
               u" If you know why: /trust";
    case unknownIssuer:
        return u"Not connected: nobody vouches for this certificate. SHA-256 "_s + fingerprint +
               u" To trust it: /trust";
    case otherName:
        return u"Not connected: the certificate is for another name"_s;
    case expired:
        return u"Not connected: the certificate has expired"_s;
    case notYetValid:
        return u"Not connected: the certificate is not valid yet"_s;
    }
    return {};
}

QString certificatecheck::fingerprintOf(const QByteArray &sha256)
{
    return QString::fromLatin1(sha256.toHex(':').toUpper());
}

QString certificatecheck::pinKey(const QString &host, quint16 port)
{
    return host + u':' + QString::number(port);
}
