// SPDX-License-Identifier: MIT
#pragma once

#include "ircuser.h"

class ircmessage;

/// Our user and host as the server shows them to others, which it puts in front of our lines.
class ourmask
{
public:
    /// Learns from a line of the server that comes from `nick`, our own.
    void note(const ircmessage &line, const QString &nick);
    /// The whole mask; its host is empty while the server has not shown it.
    ircuser with(const QString &nick) const;

private:
    ircuser shown;
};
