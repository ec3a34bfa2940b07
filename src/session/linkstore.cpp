// SPDX-License-Identifier: MIT
#include "linkstore.h"

#include "certificatecheck.h"
#include "config.h"

using namespace Qt::StringLiterals;

namespace {

QString trustedGroup()
{
    return u"Trusted"_s;
}

QString stsGroup()
{
    return u"Sts"_s;
}

} // namespace

QString linkstore::pin(const QString &host, quint16 port) const
{
    Config file(Config::settingsName());
    file.setGroup(trustedGroup());
    return file.readEntry(certificatecheck::pinKey(host, port));
}

void linkstore::setPin(const QString &host, quint16 port, const QString &fingerprint)
{
    Config file(Config::settingsName());
    file.setGroup(trustedGroup());
    if (fingerprint.isEmpty())
        file.removeEntry(certificatecheck::pinKey(host, port));
    else
        file.writeEntry(certificatecheck::pinKey(host, port), fingerprint);
}

stspolicies linkstore::policies() const
{
    Config file(Config::settingsName());
    file.setGroup(stsGroup());
    return stspolicies(file.entries());
}

void linkstore::setPolicies(const stspolicies &policies)
{
    Config file(Config::settingsName());
    file.setGroup(stsGroup());
    file.clearGroup();
    const QMap<QString, QString> entries = policies.entries();
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
        file.writeEntry(entry.key(), entry.value());
}
