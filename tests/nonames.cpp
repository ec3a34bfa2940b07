// SPDX-License-Identifier: MIT
//
// Stands in for the C library's function in programs that must not ask the network for a name, whatever a script or a
// fuzzer types: no name is known.

#include <netdb.h>

extern "C" int getaddrinfo(const char * /*name*/, const char * /*service*/, const addrinfo * /*hints*/,
                           addrinfo ** /*result*/)
{
    return EAI_NONAME;
}
