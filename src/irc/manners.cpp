// SPDX-License-Identifier: MIT
#include "manners.h"

manners manners::today()
{
    return {linecodec::utf8, true, true, true, true, true, true, true, true, true};
}
