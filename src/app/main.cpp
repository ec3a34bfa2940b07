// SPDX-License-Identifier: MIT
#include "parlo.h"
#include "qpeapplication.h"

int main(int argc, char **argv)
{
    QPEApplication app(argc, argv, QPEApplication::GuiClient);
    parlo window;
    QPEApplication::showMainWidget(&window, false);
    QPEApplication::exec();
    return 0;
}
