// SPDX-License-Identifier: MIT
#pragma once

#include "linkmemory.h"

#include <QMap>
#include <QString>

#include <optional>

/// Keeps what is remembered of servers in two groups of the settings file: `Trusted`, the fingerprints of certificates by
/// host and port, and `Sts`, the hosts that want TLS.
class linkstore : public linkmemory
{
public:
    QString pin(const QString &host, quint16 port) const override;
    bool setPin(const QString &host, quint16 port, const QString &fingerprint) override;
    stspolicies policies() const override;
    void setPolicies(const stspolicies &policies) override;

private:
    // What could not be written holds all the same, until the program ends.
    QMap<QString, QString> unsavedPins;
    std::optional<stspolicies> unsavedPolicies;
};
