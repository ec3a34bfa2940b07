// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The name of a file or folder for `name`: a network, or a channel or nick whose letters are folded. What is no small
/// letter, digit or harmless sign is percent-encoded (RFC 3986, 2.1), so that it leads to no other folder. A long name is
/// cut and ends with its hash. Two names never have the same file, also where a file system ignores case.
QString logname(const QString &name);
