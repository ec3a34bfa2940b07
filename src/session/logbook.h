// SPDX-License-Identifier: MIT
#pragma once

#include "chatlog.h"

#include <QObject>

class connection;
class irctab;
class tabwindow;

/// Keeps logs of what the tabs show, while the user wants it: one for each tab, in a folder for each server. Passwords that
/// were typed are left out.
class logbook : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive this.
    logbook(const connection &conn, tabwindow *window);

    /// A new tab: shows the end of its log, and writes down what it shows from now on.
    void watch(irctab *tab);
    /// Where the logs are, for the user.
    QString whereabouts() const;

Q_SIGNALS:
    /// Lines could not be written; `why` is for the user. Comes once.
    void failed(const QString &why);

private:
    /// Writes down the last line of `tab`.
    void note(const irctab *tab);
    bool isOn() const;
    QString fileOf(const irctab *tab) const;
    /// A line as it is shown, without a password that we have said in it.
    QString withoutPassword(const irctab *tab, const QString &line) const;

    const connection &conn;
    tabwindow *window;
    chatlog files;
};
