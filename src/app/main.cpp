// SPDX-License-Identifier: MIT
#include "parlo.h"
#include "qpeapplication.h"
#include "version.h"

int main(int argc, char **argv)
{
    QPEApplication app(argc, argv, QPEApplication::GuiClient);
    QPEApplication::setApplicationVersion(parloVersion);
    parlo window;
    QPEApplication::showMainWidget(&window, false);
    QPEApplication::exec();
    return 0;
}
