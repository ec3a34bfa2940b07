// SPDX-License-Identifier: MIT
#include "outbox.h"

#include "ctcp.h"
#include "textsplitter.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// What makes a text an action: "ACTION ", and a mark before and behind it.
constexpr qsizetype actionBytes = 9;

} // namespace

QString outbox::piece::line() const
{
    return u"PRIVMSG " + target + u" :" + (action ? ctcpMark + u"ACTION " + text + ctcpMark : text);
}

outbox::outbox()
{
    next.callOnTimeout(this, &outbox::pump);
}

QStringList outbox::cut(const piece &whole, qsizetype maxBytes)
{
    return textsplitter::split(whole.text, maxBytes - (whole.action ? actionBytes : 0));
}

bool outbox::say(const QList<piece> &texts, qsizetype maxBytes)
{
    QList<piece> pieces;
    for (const piece &whole : texts) {
        const QStringList parts = cut(whole, maxBytes);
        if (parts.isEmpty())
            return false;
        for (const QString &part : parts)
            pieces.append({whole.target, part, whole.action});
    }
    add(pieces);
    return true;
}

void outbox::add(const QList<piece> &pieces)
{
    // Whoever types a line at a time needs no pace.
    if (pieces.size() == 1 && waiting.isEmpty()) {
        if (const qint64 now = countdown::now(); pace.wait(now) == 0)
            pace.sent(now);
        Q_EMIT due(pieces.first());
        return;
    }
    waiting += pieces;
    if (!next.isActive())
        pump();
}

QList<outbox::piece> outbox::clear()
{
    next.stop();
    QList<piece> rest;
    for (const piece &p : std::exchange(waiting, {})) {
        if (!rest.isEmpty() && rest.last().target == p.target && rest.last().action == p.action)
            rest.last().text += u' ' + p.text;
        else
            rest.append(p);
    }
    return rest;
}

void outbox::pump()
{
    while (!waiting.isEmpty()) {
        const qint64 now = countdown::now();
        if (const qint64 wait = pace.wait(now); wait > 0) {
            next.start(std::chrono::milliseconds(wait));
            return;
        }
        pace.sent(now);
        Q_EMIT due(waiting.takeFirst());
    }
}
