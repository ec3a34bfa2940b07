// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Our nick in a session by address: which one the user wants, and which one the server has given us.
class ournick
{
public:
    /// The nick to ask for on a new link: `had`, unless that is only what we had to take.
    QString forNewLink(const QString &had);
    /// The server has welcomed us as `nick`; `first` was asked for first.
    void welcomed(const QString &first, const QString &nick);
    /// The user sends `line`, which may ask for a nick.
    void typed(const QString &line);
    /// The server does not let us have the nick that was asked for.
    void refused() { asked.clear(); }
    /// The server calls us `nick` from now on. It is what the user wants only if the user has asked for it.
    void renamed(const QString &nick);

    /// The nick to take back when it becomes free.
    QString wanted() const { return m_wanted; }

private:
    QString m_wanted;
    QString given;
    /// What the user has asked for, while there is no answer.
    QString asked;
};
