// SPDX-License-Identifier: MIT
#pragma once

#include <QChar>

/// The character before and after a CTCP request or reply (CTCP draft, 2).
inline constexpr QChar ctcpMark(1);
