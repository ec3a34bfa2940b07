// SPDX-License-Identifier: MIT
#pragma once

#include "completion.h"
#include "history.h"
#include "inputline.h"

#include <functional>

/// The input line of a tab. Up and Down walk through what was typed in it, Tab and Shift+Tab complete the
/// word before the cursor; in an empty line they move the focus, as usual.
class chatinput : public inputline
{
    Q_OBJECT

public:
    /// `words` returns what Tab can complete, the best first. It is called when Tab is pressed.
    chatinput(QWidget *parent, std::function<QStringList()> words);

Q_SIGNALS:
    /// The user wants to read a page further up (-1) or down (1).
    void pageWanted(int direction);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void complete(bool back);
    void replace(const QString &line);

    std::function<QStringList()> words;
    history typed;
    completion tabbed;
};
