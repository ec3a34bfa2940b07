// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <functional>

class QLineEdit;
class ircmode;
class ircuser;
class ircview;
class tabwindow;

/// A chat tab: an entry in the window's tab bar and a page in its stack, with a view above an input line.
///
/// The widget itself is never seen; `page` is. Subclasses make the view and the input line.
class irctab : public QWidget
{
    Q_OBJECT

public:
    /// Takes the tab out of the window, and the page with all that is in it.
    ~irctab() override;

    QString tabName() const { return name; }
    bool isInFront() const;
    /// Marks the tab: something has happened in it that is no message.
    void happened();
    /// Marks the tab: `nick` has said something, to us or of us if `personal`. Tab completes the last to
    /// speak first.
    void spoke(const QString &nick, bool personal);

    tabwindow *mainWindow;
    QWidget *page;
    ircview *view = nullptr;
    QLineEdit *input = nullptr;
    /// The identifier of the entry in the tab bar.
    int tabId;

public Q_SLOTS:
    void notice(const QString &nick, const QString &text);
    void message(const QString &text);
    void privmsg(const QString &nick, const QString &text);
    void action(const QString &nick, const QString &text);
    /// Shows a line of the server as it came, without its line end.
    void addRawLine(QString line);
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
    irctab(tabwindow *window, QString tabName);
    /// Makes the view, in `parent`.
    void addView(QWidget *parent);
    /// Makes the input line, at the bottom of the page, and gives it the focus. `nicks` names who is here.
    void addInput(std::function<QStringList()> nicks);

private:
    /// What Tab may complete where `nicks` are.
    QStringList words(QStringList nicks) const;

    QString name;
    /// Who has spoken here, the last one last.
    QStringList speakers;
};
