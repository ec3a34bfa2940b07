// SPDX-License-Identifier: MIT
#pragma once

/// The TCP port where none is named: the usual one for connections without encryption.
inline constexpr int ircPort = 6667;
