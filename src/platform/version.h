// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1StringView>

/// The version of this program, such as "0.2": that of the project in CMakeLists.txt.
inline constexpr QLatin1StringView parloVersion(PARLO_VERSION);
