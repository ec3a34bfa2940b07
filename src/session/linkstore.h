// SPDX-License-Identifier: MIT
#pragma once

#include "linkmemory.h"

/// Keeps what is remembered of servers in two groups of the settings file: `Trusted`, the fingerprints of certificates by
/// host and port, and `Sts`, the hosts that want TLS.
class linkstore : public linkmemory
{
public:
    QString pin(const QString &host, quint16 port) const override;
    void setPin(const QString &host, quint16 port, const QString &fingerprint) override;
    stspolicies policies() const override;
    void setPolicies(const stspolicies &policies) override;
};
