// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// Which nick to ask for next when the server does not let us have one (RFC 1459, 432 and 433): the other nick
/// of the preset, then the first one with "_", then with digits.
class nickchoice
{
public:
    /// No nick to choose.
    nickchoice() = default;
    /// `first` has been asked for. `alternative` may be empty. `knownLength` is the NICKLEN that this host told
    /// us earlier, or 0.
    nickchoice(const QString &first, QString alternative, int knownLength);

    /// The one that was asked for first, which is taken back when it becomes free.
    QString first() const { return tried.value(0); }
    /// Another user has the nick (433).
    QString nextAfterTaken() { return next(); }
    /// The server does not like the nick, which may be too long (432).
    QString nextAfterRefused();

private:
    /// Empty when there is none left.
    QString next();
    /// The nick for the `i`th try, whether or not it was tried before.
    QString candidate(qsizetype i) const;

    QString alternative;
    int knownLength = 0;
    /// So many characters the server takes, as far as we know.
    int limit = 0;
    qsizetype nextCandidate = 1;
    QStringList tried;
};
