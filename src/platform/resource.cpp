// SPDX-License-Identifier: MIT
#include "resource.h"

#include <QtGlobal>

// A static library's resources must be named once, or the linker leaves them out (Qt: The Qt Resource
// System). Q_INIT_RESOURCE must be outside of any namespace.
static void initResources()
{
    Q_INIT_RESOURCE(parlo);
}

QPixmap Resource::loadPixmap(const QString &name)
{
    initResources();
    // Without the format Qt would load all image plugins and ask each of them.
    return {QString(u":/" + name + u".png"), "PNG"};
}
