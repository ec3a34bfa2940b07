// SPDX-License-Identifier: MIT
#pragma once

#include "countdown.h"
#include "sendpace.h"

#include <QList>

/// What somebody wants to say, on its way out: the pieces of a long text go at a pace that servers bear.
class outbox : public QObject
{
    Q_OBJECT

public:
    struct piece
    {
        QString target;
        QString text;
        bool action = false;
    };

    outbox();

    /// Takes what goes out next; the first pieces do so before this returns.
    void add(const QList<piece> &pieces);
    /// Gives up what has not gone out, and returns it.
    QList<piece> clear();

Q_SIGNALS:
    /// It is this piece's turn.
    void due(const outbox::piece &next);

private:
    void pump();

    QList<piece> waiting;
    sendpace pace;
    countdown next;
};
