// SPDX-License-Identifier: MIT
#pragma once

#include <QTabBar>

/// A tab bar whose tabs keep one identifier for life; QTabBar's own indices shift when a tab goes.
class tabbar : public QTabBar
{
    Q_OBJECT

public:
    explicit tabbar(QWidget *parent);

    /// Adds a tab that reads exactly `label` and returns its identifier.
    int addTab(const QString &label);
    void setCurrentTab(int id);
    /// The identifier of the tab in front, or -1.
    int currentTab() const;
    /// Removes a tab; then selected() names the tab that is in front, whether or not it has changed.
    void removeTab(int id);

Q_SIGNALS:
    /// This tab has been brought to the front, or was there when the user clicked it.
    void selected(int id);

private:
    int indexOf(int id) const;
    void emitSelected(int index);

    int nextId = 0;
};
