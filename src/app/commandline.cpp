// SPDX-License-Identifier: MIT
#include "commandline.h"

#include "ircaddress.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

struct qtoption
{
    QLatin1StringView name;
    /// Whether its value may be the next word. Each may have it behind a "=".
    bool takesWord = true;
};

/// What the documentation of QGuiApplication and QApplication names, and what the X11 plugin reads. Qt takes two dashes
/// for one.
constexpr qtoption qtOptions[] = {
    {"-platform"_L1},
    {"-platformpluginpath"_L1},
    {"-platformtheme"_L1},
    {"-plugin"_L1},
    {"-qmljsdebugger"_L1, false},
    {"-qwindowgeometry"_L1},
    {"-geometry"_L1},
    {"-qwindowicon"_L1},
    {"-icon"_L1},
    {"-qwindowtitle"_L1},
    {"-title"_L1},
    {"-reverse"_L1, false},
    {"-session"_L1},
    {"-style"_L1},
    {"-stylesheet"_L1},
    {"-widgetcount"_L1, false},
    {"-display"_L1},
    {"-name"_L1},
    {"-nograb"_L1, false},
    {"-dograb"_L1, false},
};

const qtoption *qtOption(const QString &word)
{
    const QString name = word.mid(word.startsWith(u"--") ? 1 : 0).section(u'=', 0, 0);
    const auto *found = std::find_if(std::begin(qtOptions), std::end(qtOptions),
                                     [&name](const qtoption &o) { return o.name == name; });
    return found == std::end(qtOptions) ? nullptr : found;
}

} // namespace

commandline::commandline(int argc, char **argv)
{
    QStringList words;
    for (int i = 1; i < argc; ++i) {
        const QString word = QString::fromLocal8Bit(argv[i]);
        const qtoption *option = qtOption(word);
        if (option == nullptr)
            words.append(word);
        else if (option->takesWord && !word.contains(u'='))
            ++i;
    }
    if (words.isEmpty())
        return;
    const ircaddress wanted(words.first());
    if (words.size() > 1) {
        m_what = wish::none;
    } else if (words.first() == u"--help") {
        m_what = wish::help;
    } else if (words.first() == u"--version") {
        m_what = wish::version;
    } else if (wanted.isValid()) {
        m_address = words.first();
    } else {
        m_what = wish::none;
        m_error = wanted.error();
    }
}
