// SPDX-License-Identifier: MIT
#pragma once

#include "irctab.h"

/// The tab of the server, or of one private conversation, which is named after the other nick.
class plaintab : public irctab
{
    Q_OBJECT

public:
    plaintab(tabwindow *window, const QString &name, usercommands::place where = usercommands::place::query,
             opening how = opening::front);

    /// Shows a mode change with any target. The server tab uses it for the modes of our own nick.
    void showModes(ircmode *m);
};
