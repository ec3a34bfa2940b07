// SPDX-License-Identifier: MIT
#include "manners.h"

const manners &manners::classic()
{
    static const manners plain;
    return plain;
}

manners manners::today()
{
    return {.codec = linecodec::utf8,
            .taggedLines = true,
            .negotiates = true,
            .readsRules = true,
            .moreCommands = true,
            .mindsSending = true,
            .plainFields = true,
            .sortsReplies = true,
            .quietTabs = true,
            .showsLinks = true,
            .keepsPlace = true};
}
