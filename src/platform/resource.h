// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>

/// The pictures that are part of the program.
class Resource
{
public:
    /// The picture called `name`; a null pixmap when there is none.
    static QPixmap loadPixmap(const QString &name);
};
