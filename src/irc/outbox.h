// SPDX-License-Identifier: MIT
#pragma once

#include "countdown.h"
#include "sendpace.h"

#include <QStringList>

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

        /// As it goes to the server (RFC 1459, 4.4.1; CTCP draft, 3).
        QString line() const;
    };

    outbox();

    /// The texts of the pieces; none if these would be too many.
    static QStringList cut(const piece &whole, qsizetype maxBytes);

    /// Cuts each of `texts` into pieces of at most `maxBytes`, which go out next; the first ones do so before this returns.
    /// False, and nothing goes out, if one of them had too many.
    bool say(const QList<piece> &texts, qsizetype maxBytes);
    /// Gives up what has not gone out, and returns it: pieces that followed each other as one.
    QList<piece> clear();

Q_SIGNALS:
    /// It is this piece's turn.
    void due(const outbox::piece &next);

private:
    void add(const QList<piece> &pieces);
    void pump();

    QList<piece> waiting;
    sendpace pace;
    countdown next;
};
