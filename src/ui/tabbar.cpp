// SPDX-License-Identifier: MIT
#include "ui/tabbar.h"

#include <QSignalBlocker>

namespace {

/// No name in a line of 512 bytes (RFC 1459, 2.3) is longer. One that is would take seconds to lay out.
constexpr qsizetype longestLabel = 512;

} // namespace

tabbar::tabbar(QWidget *parent) : QTabBar(parent)
{
    connect(this, &QTabBar::currentChanged, this, &tabbar::emitSelected);
    // A click on the tab in front changes nothing, so QTabBar says nothing more than this.
    connect(this, &QTabBar::tabBarClicked, this, [this](int index) {
        if (index == currentIndex())
            emitSelected(index);
    });
}

int tabbar::addTab(const QString &label)
{
    const int id = nextId++;
    // The identifier must stand before the signal of the first tab, which becomes the current one by itself.
    const QSignalBlocker silence(this);
    const int index = QTabBar::addTab(label.left(longestLabel).replace(u'&', QStringLiteral("&&")));
    setTabData(index, id);
    return id;
}

void tabbar::setCurrentTab(int id)
{
    setCurrentIndex(indexOf(id));
}

int tabbar::currentTab() const
{
    return currentIndex() < 0 ? -1 : tabData(currentIndex()).toInt();
}

void tabbar::removeTab(int id)
{
    {
        const QSignalBlocker silence(this);
        QTabBar::removeTab(indexOf(id));
    }
    emitSelected(currentIndex());
}

int tabbar::indexOf(int id) const
{
    for (int i = 0; i < count(); ++i) {
        if (tabData(i).toInt() == id)
            return i;
    }
    return -1;
}

void tabbar::emitSelected(int index)
{
    if (index >= 0)
        Q_EMIT selected(tabData(index).toInt());
}
