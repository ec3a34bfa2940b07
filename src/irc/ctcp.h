// SPDX-License-Identifier: MIT
#pragma once

#include <QChar>

/// Stands before and behind a CTCP request or reply (CTCP draft, 2).
inline constexpr QChar ctcpMark(1);
