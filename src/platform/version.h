// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1StringView>

/// The version of this program, such as "0.2". CMakeLists.txt has it, for the package and the manual page, too.
inline constexpr QLatin1StringView parloVersion(PARLO_VERSION);
