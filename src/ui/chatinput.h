// SPDX-License-Identifier: MIT
#pragma once

#include "completion.h"
#include "history.h"
#include "inputline.h"

#include <functional>

class linenote;

/// The input line of a tab. Up and Down walk through what was typed in it, Tab and Shift+Tab complete the
/// word before the cursor; in an empty line they move the focus, as usual.
///
/// Where the owner minds lines, a text that is too long for one line of IRC says so while it is typed, and whoever
/// pastes several lines is asked whether to send them.
class chatinput : public inputline
{
    Q_OBJECT

public:
    /// `words` returns what Tab can complete, the best first. It is called when Tab is pressed.
    chatinput(QWidget *parent, std::function<QStringList()> words);

    /// `pieces` returns into how many lines a text will be cut: 0 if it is too long to be sent, -1 while lines are not
    /// minded. It is called while the user types, but not for short texts.
    void mindLines(std::function<qsizetype(const QString &)> pieces);

Q_SIGNALS:
    /// The user pasted these lines and wants to send them. The text is still in the field, as one line.
    void gotLines(const QStringList &lines);
    /// The user wants to read a page further up (-1) or down (1).
    void pageWanted(int direction);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void complete(bool back);
    void replace(const QString &line);
    void showPieces();
    /// Asks whether to send them; `before` was the text before they came into it.
    void ask(QStringList lines, const QString &before);

    std::function<QStringList()> words;
    std::function<qsizetype(const QString &)> pieces;
    linenote *note;
    /// The text that was announced last.
    QString shown;
    history typed;
    completion tabbed;
};
