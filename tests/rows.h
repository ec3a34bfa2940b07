// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The text that a script or a table of rows means: "^@" is U+0000, "^A" U+0001 and so on, so that people can
/// read them; "$300x" is 300 times an x; a "$" at the end keeps the space before it.
QString unescaped(QString text);

/// Makes the rows of a test from tests/rows/`name`.txt: "INPUT => EXPECTED" each, in columns of these names.
/// Lines that begin with ";" are comments.
void addRows(const char *name);
