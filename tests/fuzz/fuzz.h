// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayList>

/// The target: uses `input` as a stranger's data, and requires what must be true for every input. Each
/// program has one. libFuzzer calls it with inputs that it generates, replay.cpp with the files of a corpus.
void fuzz(const QByteArray &input);

/// Ends the program unless `holds`, so that the input is a finding.
void require(bool holds, const char *what);

/// Splits what was written to a connection into lines. Requires that each ends with CR LF and has no CR, LF
/// or U+0000 inside.
QByteArrayList linesOnWire(const QByteArray &bytes);
