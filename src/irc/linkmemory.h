// SPDX-License-Identifier: MIT
#pragma once

#include "stspolicy.h"

/// What is remembered of servers from one connection to the next, and from one start to the next. Who keeps it, and where,
/// is not known here.
class linkmemory
{
public:
    linkmemory() = default;
    linkmemory(const linkmemory &) = delete;
    linkmemory &operator=(const linkmemory &) = delete;
    virtual ~linkmemory() = default;

    /// The fingerprint of the certificate that the user trusts at this host and port; empty when there is none.
    virtual QString pin(const QString &host, quint16 port) const = 0;
    /// An empty one removes what was kept. False if this holds only until the program ends, as it cannot be stored.
    virtual bool setPin(const QString &host, quint16 port, const QString &fingerprint) = 0;

    virtual stspolicies policies() const = 0;
    virtual void setPolicies(const stspolicies &policies) = 0;
};
