// SPDX-License-Identifier: MIT
#pragma once

#include "netbatch.h"
#include "ourmask.h"
#include "registration.h"

/// What holds for one link to the server, and not for the next.
struct linkstate
{
    /// How far the registration is.
    registration progress;
    /// Whether the server has welcomed us (001).
    bool registered = false;
    /// The server's name for itself in its welcome.
    QString serverName;
    // Sessions by address:
    ourmask mask;
    netbatches batches;
    /// Whether the channels were joined.
    bool joined = false;
    /// The channels of which the user has asked for the members, while there is no answer.
    QStringList namesAsked;
};
