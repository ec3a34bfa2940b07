// SPDX-License-Identifier: MIT
#pragma once

#include "ircuser.h"

/// A member of one channel: a user with their ranks there.
class ircchanneluser : public ircuser
{
public:
    ircchanneluser() = default;

    /// `prefixes` are the rank characters of a NAMES reply (RFC 2812, 353): "@", "%", "+", in any order.
    ircchanneluser(const QString &mask, const QString &prefixes, casemapping names = casemapping::unicode);

    /// Whether it is one, or stands above one.
    bool isOp() const { return op || higher != 0; }
    bool isHalfop() const { return halfop; }
    bool isVoice() const { return voice; }
    void setOp() { op = true; }
    void setHalfop() { halfop = true; }
    void setVoice() { voice = true; }
    void removeOp() { op = false; }
    void removeHalfop() { halfop = false; }
    void removeVoice() { voice = false; }
    /// A rank above operator, which the mode `letter` gives and takes: there may be several.
    void setHigher(QChar letter, bool held);

    /// The same nick; ranks do not count.
    friend bool operator==(const ircchanneluser &a, const ircchanneluser &b) { return a.key() == b.key(); }
    /// The order of a roster: operators, half-operators, voiced, the rest; within a rank by nick.
    friend bool operator<(const ircchanneluser &a, const ircchanneluser &b);

private:
    bool op = false;
    bool halfop = false;
    bool voice = false;
    /// A bit for each letter from "A" on.
    quint64 higher = 0;
};
Q_DECLARE_TYPEINFO(ircchanneluser, Q_RELOCATABLE_TYPE);
