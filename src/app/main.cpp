// SPDX-License-Identifier: MIT
#include "commandline.h"
#include "parlo.h"
#include "qpeapplication.h"
#include "version.h"

#include <cstdio>

namespace {

constexpr const char *usage = "usage: parlo [irc://HOST | ircs://[ACCOUNT@]HOST[:PORT][/CHANNEL,...]]\n"
                              "       parlo --help | --version\n";

int showWindow(int argc, char **argv, const QString &address)
{
    QPEApplication app(argc, argv, QPEApplication::GuiClient);
    QPEApplication::setApplicationVersion(parloVersion);
    parlo window(nullptr, nullptr, {}, address);
    QPEApplication::showMainWidget(&window, false);
    QPEApplication::exec();
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const commandline called(argc, argv);
    switch (called.what()) {
    case commandline::wish::window:
        return showWindow(argc, argv, called.address());
    case commandline::wish::help:
        return std::fputs(usage, stdout) < 0 ? 1 : 0;
    case commandline::wish::version:
        return std::printf("parlo %s\n", parloVersion.data()) < 0 ? 1 : 0;
    case commandline::wish::none:
        break;
    }
    std::fprintf(stderr, "%s%s%s", qPrintable(called.error()), called.error().isEmpty() ? "" : "\n", usage);
    return 2;
}
