// SPDX-License-Identifier: MIT
#include "preferencekeeper.h"

#include "config.h"

preferencekeeper::preferencekeeper() : m_now(preferences::load(Config::settingsName())), saved(m_now) {}

void preferencekeeper::change(const preferences &wanted)
{
    preferences next = wanted;
    next.windowSize = m_now.windowSize;
    if (next == m_now)
        return;
    m_now = next;
    Q_EMIT changed();
}

void preferencekeeper::save()
{
    if (m_now != saved && m_now.save(Config::settingsName(), saved))
        saved = m_now;
}
