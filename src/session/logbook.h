// SPDX-License-Identifier: MIT
#pragma once

#include "chatlog.h"

#include <QObject>

class connection;
class irctab;
class tabwindow;

/// Writes what the tabs show to logs, while the user wants that: one for each tab, in a folder for each host. Passwords in
/// what we say are left out, see withoutSecrets().
class logbook : public QObject
{
    Q_OBJECT

public:
    /// The connection knows the host, and the window what the user wants. Both must outlive this.
    logbook(const connection &conn, tabwindow *window);

    /// A new tab: shows the end of its log in it, if logs are on, and writes down what it shows from now on.
    void watch(irctab *tab);
    /// Where the logs are, or how to get some, as a text for the user.
    QString whereabouts() const;

Q_SIGNALS:
    /// Lines were lost, because they could not be written; `why` is for the user. Comes once.
    void failed(const QString &why);

private:
    /// Writes down the last line of `tab`.
    void note(const irctab *tab);
    bool isOn() const;
    /// The name of the log of `tab`, with its letters folded.
    QString fileOf(const irctab *tab) const;
    /// A line as it is shown, without a password that we have said in it.
    QString withoutPassword(const irctab *tab, const QString &line) const;

    const connection &conn;
    tabwindow *window;
    chatlog files;
};
