// SPDX-License-Identifier: MIT
#pragma once

#include "usercommands.h"

#include <QWidget>

#include <functional>

class QLineEdit;
struct event;
class ircmode;
class ircuser;
class ircview;
class isupport;
struct manners;
struct pastline;
class tabwindow;

/// A chat tab: an entry in the window's tab bar and a page in its stack, with a view above an input line.
///
/// The widget itself is never shown; `page` is. Subclasses make the view and the input line.
class irctab : public QWidget
{
    Q_OBJECT

public:
    /// Where a new tab opens.
    enum class opening { front, background };

    /// Takes the tab out of the window, and the page with all that is in it.
    ~irctab() override;

    QString tabName() const { return name; }
    /// The name as it is shown: in a session by address it cannot leave its place, whoever chose it.
    QString shownName() const;
    bool isInFront() const;
    /// From now on, goes by these rules of a server and these manners of a session, and `we` are the user; all must outlive
    /// the tab.
    virtual void follow(const isupport &serverRules, const manners &sessionManner, const ircuser &we);
    /// Says in the empty input line why nothing can be sent now; an empty `text` says nothing.
    void setState(const QString &text);
    /// What was typed cannot be sent: says why, and keeps it in the input line, if this comes from gotUserInput().
    void refuseInput(const QString &why);
    /// In sessions that mind what they send, the input line tells the user into how many lines a text will be cut, as
    /// `pieces` says (0: too long), and offers to send a text of several lines that is pasted into it: `send` gets
    /// the lines, and may refuse them with refuseInput(). None of them is a command.
    void mindLines(std::function<qsizetype(const QString &)> pieces,
                   const std::function<void(const QStringList &)> &send);
    /// Takes note of what is shown here next. The line has a tint if it is talk for us, shows when it was said if it is
    /// old, and is hidden if an ignored person did it. Unless it is hidden, old or ours, the tab is marked with it, and
    /// Tab completes its speaker first.
    void happened(const struct event &what);
    /// Shows the end of the log, which is no news. Call this before anything else is shown here.
    void showPast(const QList<pastline> &past);

    tabwindow *mainWindow;
    QWidget *page;
    ircview *view = nullptr;
    QLineEdit *input = nullptr;
    /// The identifier of the entry in the tab bar.
    int tabId;
    /// The rules of the server.
    const isupport *rules;

public Q_SLOTS:
    void notice(const QString &nick, const QString &text);
    void message(const QString &text);
    void privmsg(const QString &nick, const QString &text);
    void action(const QString &nick, const QString &text);
    /// Shows a line of the server unchanged, without its line end.
    void addRawLine(const QString &line);
    void quit(ircuser *who, const QString &reason);
    /// Shows a mode change, if its target is the name of this tab.
    void modes(ircmode *m);
    void nick(const QString &oldNick, const QString &newNick);
    void userInput();
    void tabBarClicked(int id);

Q_SIGNALS:
    /// This tab has come to the front.
    void amTopTab(irctab *tab);
    /// The user typed `text` and pressed Return; it may be empty.
    void gotUserInput(const QString &text, irctab *tab);

protected:
    irctab(tabwindow *window, QString tabName, opening how = opening::front);
    /// Makes the view, in `parent`.
    void addView(QWidget *parent);
    /// Makes the input line at the bottom of the page, and gives it the focus. The Tab key completes the
    /// nicks that `nicks` returns, and the commands that work in a tab for `where`.
    void addInput(usercommands::place where, std::function<QStringList()> nicks);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// Shows as much of the state as fits into the input line.
    void showState();
    /// What the Tab key can complete.
    QStringList words(usercommands::place where, QStringList nicks) const;

    QString name;
    const manners *m_manner;
    opening opened;
    bool inputRefused = false;
    QString state;
    /// The nicks that spoke here, the latest one last.
    QStringList speakers;
};
