// SPDX-License-Identifier: MIT
#include "ircaddress.h"
#include "parlo.h"
#include "qpeapplication.h"
#include "version.h"

#include <cstdio>

namespace {

constexpr const char *usage = "usage: parlo [irc://HOST | ircs://[ACCOUNT@]HOST[:PORT][/CHANNEL,...]]\n"
                              "       parlo --help | --version\n";

bool isAsked(int argc, char **argv, const char *option)
{
    return argc == 2 && qstrcmp(argv[1], option) == 0;
}

} // namespace

int main(int argc, char **argv)
{
    // These answer without a screen, too.
    if (isAsked(argc, argv, "--help"))
        return std::fputs(usage, stdout) < 0 ? 1 : 0;
    if (isAsked(argc, argv, "--version"))
        return std::printf("parlo %s\n", parloVersion.data()) < 0 ? 1 : 0;
    QPEApplication app(argc, argv, QPEApplication::GuiClient);
    QPEApplication::setApplicationVersion(parloVersion);
    const QString argument = QPEApplication::arguments().value(1);
    const ircaddress address(argument);
    if (QPEApplication::arguments().size() > 2 || (!argument.isEmpty() && !address.isValid())) {
        std::fprintf(stderr, "%s%s%s", qPrintable(address.error()), address.error().isEmpty() ? "" : "\n",
                     usage);
        return 2;
    }
    parlo window(nullptr, nullptr, {}, argument);
    QPEApplication::showMainWidget(&window, false);
    QPEApplication::exec();
    return 0;
}
