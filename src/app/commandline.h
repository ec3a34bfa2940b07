// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// What the program is called with, apart from Qt's own options. It is read before there is an application object, which
/// needs a screen.
class commandline
{
public:
    enum class wish { window, help, version, none };

    commandline(int argc, char **argv);

    /// None if nobody can tell: then error() may say why, and the usage is to be shown.
    wish what() const { return m_what; }
    /// For the connect dialog; may be empty.
    QString address() const { return m_address; }
    QString error() const { return m_error; }

private:
    wish m_what = wish::window;
    QString m_address;
    QString m_error;
};
