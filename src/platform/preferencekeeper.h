// SPDX-License-Identifier: MIT
#pragma once

#include "preferences.h"

#include <QObject>

/// The preferences while the program runs, and what of them the settings file holds.
class preferencekeeper : public QObject
{
    Q_OBJECT

public:
    /// Starts with the preferences in the settings file.
    preferencekeeper();

    const preferences &now() const { return m_now; }
    /// From now on `wanted` holds. The size of the window has no part in this: it stays.
    void change(const preferences &wanted);
    void setWindowSize(const QSize &size) { m_now.windowSize = size; }
    /// Writes what has changed, if anything has. What cannot be written is tried again the next time.
    void save();

Q_SIGNALS:
    /// The user wants something else from now on: now() says it.
    void changed();

private:
    preferences m_now;
    /// What the settings file holds.
    preferences saved;
};
