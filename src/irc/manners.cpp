// SPDX-License-Identifier: MIT
#include "manners.h"

const manners &manners::classic()
{
    static const manners plain;
    return plain;
}

manners manners::today()
{
    return {linecodec::utf8, true, true, true, true, true, true, true, true, true};
}
