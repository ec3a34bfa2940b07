// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayList>

/// The target: does with `input` what a stranger would, and requires what must hold whatever that is. Each
/// program has one. libFuzzer calls it with what it thinks of, replay.cpp with the files of a corpus.
void fuzz(const QByteArray &input);

/// Ends the program, which makes the input a finding, unless `holds`.
void require(bool holds, const char *what);

/// The lines in what was written to a connection, and requires that they are lines: each ends with CR LF and
/// has no CR, LF or U+0000 inside.
QByteArrayList linesOnWire(const QByteArray &bytes);
