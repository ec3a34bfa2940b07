// SPDX-License-Identifier: MIT
#pragma once

/// The TCP port if none is given: the usual one for connections without encryption.
inline constexpr int ircPort = 6667;
