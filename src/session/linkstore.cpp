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
    const QString key = certificatecheck::pinKey(host, port);
    if (const auto own = unsavedPins.find(key); own != unsavedPins.end())
        return *own;
    Config file(Config::settingsName());
    file.setGroup(trustedGroup());
    return file.readEntry(key);
}

bool linkstore::setPin(const QString &host, quint16 port, const QString &fingerprint)
{
    const QString key = certificatecheck::pinKey(host, port);
    Config file(Config::settingsName());
    file.setGroup(trustedGroup());
    if (fingerprint.isEmpty())
        file.removeEntry(key);
    else
        file.writeEntry(key, fingerprint);
    const bool saved = file.save();
    if (saved)
        unsavedPins.remove(key);
    else
        unsavedPins.insert(key, fingerprint);
    return saved;
}

stspolicies linkstore::policies() const
{
    if (unsavedPolicies)
        return *unsavedPolicies;
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
    unsavedPolicies = file.save() ? std::nullopt : std::optional(policies);
}
