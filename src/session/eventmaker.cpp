// SPDX-License-Identifier: MIT
#include "eventmaker.h"

#include "connection.h"
#include "ignorelist.h"
#include "ircmessage.h"
#include "ircmode.h"
#include "mention.h"
#include "preferences.h"

#include <algorithm>

namespace {

/// An older line is one that was kept for us: it shows its time and is no news.
constexpr qint64 maxAgeMs = 60'000;

} // namespace

event eventmaker::make(event::kind what)
{
    event e;
    e.what = what;
    e.when = QDateTime::currentMSecsSinceEpoch();
    return e;
}

event eventmaker::make(event::kind what, const ircuser &who, const QDateTime &said) const
{
    event e = make(what);
    e.who = who;
    const bool byUs = conn.isMe(who.nick());
    e.ours = what != event::kind::reply && byUs;
    e.ignored = !byUs && conn.manner.moreCommands && ignored.ignores(who, conn.supports);
    if (conn.manner.taggedLines && said.isValid()) {
        e.old = e.when - said.toMSecsSinceEpoch() > maxAgeMs;
        e.when = e.old ? said.toMSecsSinceEpoch() : e.when;
    }
    return e;
}

event eventmaker::make(event::kind what, const ircmessage *msg, const QString &text) const
{
    event e = make(what, *msg->prefix(), msg->tags().time());
    e.where = msg->param(0, true);
    e.text = text;
    e.forUs = e.isTalk() && !e.ours && !e.ignored && (addressedToMe(msg) || isForUs(text));
    return e;
}

bool eventmaker::isForUs(const QString &text) const
{
    return mentions(text, conn.identity.nick()) ||
           std::ranges::any_of(prefs.highlights, [&](const QString &word) { return mentions(text, word); });
}

event eventmaker::make(const ircmode &change) const
{
    event e = make(event::kind::mode, change.prefix(), change.time());
    e.where = change.target();
    return e;
}

bool eventmaker::addressedToMe(const ircmessage *msg) const
{
    return conn.isMe(msg->param(0, false));
}

bool eventmaker::sentByMe(const ircmessage *msg) const
{
    return conn.isMe(msg->prefix()->nick());
}
