// SPDX-License-Identifier: MIT
#pragma once

#include "irctab.h"

/// The tab of the server, or of one private conversation, which is named after the other nick.
class plaintab : public irctab
{
    Q_OBJECT

public:
    plaintab(tabwindow *window, const QString &name, usercommands::place where = usercommands::place::query);

    /// Shows a mode change whatever its target: in the server tab, those of the user's own nick.
    void showModes(ircmode *m);
};
