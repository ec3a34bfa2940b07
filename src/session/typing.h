// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

class connection;
class ignorelist;
class irctab;
class logbook;
class tabkeeper;
class tabwindow;

/// What the user types or pastes in a session by address, and what becomes of it: only what was sent is shown as said.
/// What cannot be sent stays in the input line, and the tab says why.
class typing : public QObject
{
    Q_OBJECT

public:
    /// The other parts of the session that a typed line may concern.
    struct rooms
    {
        connection &conn;
        tabkeeper &tabs;
        ignorelist &ignored;
        const logbook &logs;
        tabwindow *window;
    };

    /// All of them must outlive this.
    explicit typing(const rooms &ofSession);

    /// A new tab: its input line says into how many lines a text will be cut, and offers to send pasted lines.
    void watch(irctab *tab);
    /// Does what `text` says, which was typed in `tab`.
    void take(const QString &text, irctab *tab);
    /// Does a line of a preset's "Perform", as if it were typed in the tab of the server. One that would lead away from
    /// the connection does nothing, and one with a password is not sent where others could read it.
    void perform(const QString &line);

private:
    struct word;
    static const word words[];

    // The words that are done here.
    void act(irctab *tab, const QString &args);
    void query(irctab *tab, const QString &args);
    void ignore(irctab *tab, const QString &args);
    void unignore(irctab *tab, const QString &args);
    void log(irctab *tab, const QString &args);

    /// Says `text` to whom the tab `to` is for; where it was typed, the user reads why that cannot be.
    void say(irctab *typedIn, const irctab *to, const QString &text, bool action);
    /// Says all of the pasted lines, or none. None is taken as a command.
    void sayLines(irctab *tab, const QStringList &lines);
    /// Why nothing can be said in `tab`; empty if it can.
    QString obstacle(const irctab *tab) const;
    /// Into how many lines what is typed in `tab` will be cut; 0 if it is too long to be sent.
    qsizetype piecesOf(const irctab *tab, const QString &typed) const;
    /// What could not go out any more comes back into the input line, if that is empty.
    void giveBack(const QString &target, const QString &text, bool action);
    void showSaid(const QString &target, const QString &text, bool action);

    connection &conn;
    tabkeeper &tabs;
    ignorelist &ignored;
    const logbook &logs;
    tabwindow *window;
};
