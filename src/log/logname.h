// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The file name, without a folder, for the log of `name`: a network, or a channel or nick of which the letters are folded
/// already. What is no small letter, digit or harmless sign is percent-encoded (RFC 3986, 2.1), so that it leads to no other
/// folder. A long name is cut and ends with its hash. Two names never have the same file, also where files ignore case.
QString logname(const QString &name);
