// SPDX-License-Identifier: MIT
#include "resource.h"

#include <QtGlobal>

// A static library's resources must be named once, or the linker leaves them out (Qt: The Qt Resource
// System). Q_INIT_RESOURCE must stand outside of any namespace.
static void initResources()
{
    Q_INIT_RESOURCE(parlo);
}

QPixmap Resource::loadPixmap(const QString &name)
{
    initResources();
    // The format is said, or Qt would load every image plugin to ask whether the picture is its own.
    return {QString(u":/" + name + u".png"), "PNG"};
}
