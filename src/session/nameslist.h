// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class ircchannel;

/// Who is in `channel`, with their ranks, as one line for a reader: "12 people: @ada +bea carl …". After some hundred
/// characters it ends.
QString namesText(const ircchannel &channel);
