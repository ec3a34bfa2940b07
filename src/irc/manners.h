// SPDX-License-Identifier: MIT
#pragma once

#include "linecodec.h"

/// How a session behaves: what a plain host name asks for (RFC 1459, as it was), and what an address does. Each room reads
/// here what it needs; nobody asks which of the two a session is.
struct manners
{
    /// How lines are decoded and encoded.
    linecodec codec = linecodec::latin1;
    /// Lines may begin with tags, and words end at a space alone (IRCv3, message-tags).
    bool taggedLines = false;
    /// Capabilities and login are negotiated, and channels are joined once we are welcome (IRCv3).
    bool negotiates = false;
    /// The server's word on its rules counts (numeric 005).
    bool readsRules = false;
    /// The words behind "/" that came later exist, and what nobody knows goes to the server. So people can be ignored.
    bool moreCommands = false;
    /// What does not fit into a line goes out in several, and what cannot go out is not shown as said.
    bool mindsSending = false;
    /// A field of a line is text, whatever is in it, and all of today's formatting is shown.
    bool plainFields = false;
    /// What the server says has its place: topics and errors in their channel, answers where they were asked for.
    bool sortsReplies = false;
    /// A private message opens its tab in the background; our own JOIN uses a tab that is there.
    bool quietTabs = false;
    /// Web addresses look like links, and the keyboard can walk through them.
    bool showsLinks = false;
    /// A reader who has scrolled up is left there.
    bool keepsPlace = false;

    /// What a plain host name asks for.
    static const manners &classic();
    /// What an address asks for.
    static manners today();
};
