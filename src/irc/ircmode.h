// SPDX-License-Identifier: MIT
#pragma once

#include "ircuser.h"

#include <QDateTime>
#include <QList>
#include <QStringList>

class ircmessage;
class isupport;

/// One letter of a MODE line.
struct modeletter
{
    QChar sign;
    QChar letter;
    bool takesArgument = false;
    /// Empty when it takes none, or when there are too few.
    QString argument;
};

/// One mode change (RFC 1459, 4.2.3): who changes which modes of which channel or nick, with which arguments.
class ircmode
{
public:
    /// Reads a MODE line, or one of the same form. One leading ":" is removed from each word except the
    /// target.
    explicit ircmode(const ircmessage &m);
    /// One letter of the change `all`, as if it were a MODE line of its own. It has one argument, which may
    /// be empty.
    ircmode(const ircmode &all, QChar sign, QChar letter, const QString &argument);

    /// The user who set the mode: a nick alone, without user and host. Never null.
    ircuser *who() { return &m_who; }
    const ircuser *who() const { return &m_who; }
    /// The same, with user and host.
    const ircuser &prefix() const { return m_prefix; }
    /// When it was set, if the line says so (IRCv3, server-time).
    const QDateTime &time() const { return m_time; }
    QString target() const { return m_target; }
    /// The sign and the letters, such as "+o" or "+ov-v".
    QString modes() const { return m_modes; }
    /// Argument `i`; empty when there is none.
    QString arg(int i) const { return m_args.value(i); }
    /// The letters, each with its argument, as `rules` say; those of a nick's modes take none. Of very many the first ones.
    QList<modeletter> letters(const isupport &rules) const;
    /// All arguments, joined by one space.
    QString args() const { return m_args.join(u' '); }

private:
    ircuser m_prefix;
    ircuser m_who;
    QDateTime m_time;
    QString m_target;
    QString m_modes;
    QStringList m_args;
};
