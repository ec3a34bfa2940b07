// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class ircmessage;
class isupport;

/// What the server says beside the talk, as people read it, and where it belongs (sessions by address).
struct sortedreply
{
    enum class place {
        /// Nowhere: it says nothing to a reader.
        none,
        server,
        /// The tab of `channel`, if there is one; else as `server`, or as `front` if it is an error.
        channel,
        /// The tab in front: it answers what the user typed there.
        front,
    };

    place where = place::server;
    /// Empty where it concerns none.
    QString channel;
    QString text;
    /// Whether it says what is wrong with something that we have asked of `channel`.
    bool isError = false;
};

/// Sorts a reply or an error (RFC 2812, 5), or any line that nobody else handles.
sortedreply sortReply(const ircmessage &message, const isupport &rules);
