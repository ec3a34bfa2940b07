// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QStringList>
#include <QTabBar>

/// A tab bar whose tabs keep one identifier for life; QTabBar's own indices shift when a tab goes.
///
/// A tab with news shows it by the colour of its text until it is selected; while it is scrolled out of sight, a
/// mark at that end of the bar shows it. Ctrl+PageUp, Ctrl+PageDown and
/// Ctrl+Tab walk through the tabs, Alt+1 to Alt+9 go to one, Alt+A to the next one with the most urgent news.
class tabbar : public QTabBar
{
    Q_OBJECT

public:
    /// What has come to a tab, the least urgent first.
    enum class activity { none, event, message, personal };

    explicit tabbar(QWidget *parent);

    /// Adds a tab that reads exactly `label` and returns its identifier.
    int addTab(const QString &label);
    void setCurrentTab(int id);
    /// The identifier of the tab in front, or -1.
    int currentTab() const;
    /// Removes a tab; then selected() names the tab that is in front, whether or not it has changed.
    void removeTab(int id);
    /// Whether selected() is emitted only because another tab goes: the one in front stays, and the user has
    /// chosen nothing.
    bool frontStays() const { return m_frontStays; }
    /// The labels, from left to right.
    QStringList labels() const;
    /// Marks a tab, unless it is in front or marked with something more urgent.
    void addActivity(int id, activity what);

Q_SIGNALS:
    /// This tab has been brought to the front, or was there when the user clicked it.
    void selected(int id);

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    /// As wide as its label, within limits: longer ones elide in the middle, and tabs that do not fit scroll.
    QSize tabSizeHint(int index) const override;
    QSize minimumTabSizeHint(int index) const override { return tabSizeHint(index); }

private:
    int indexOf(int id) const;
    QString label(int index) const;
    void emitSelected(int index);
    void addShortcuts();
    void step(int by);
    void goToActivity();
    activity activityAt(int index) const;
    /// Readable on this bar; invalid for none.
    QColor colourOf(activity what) const;
    /// Shows the news of the tab at `index`, by colour and to a screen reader.
    void showActivity(int index);
    /// The part of the bar that shows tabs: what the buttons that scroll them leave.
    QRect inSight() const;

    int nextId = 0;
    bool m_frontStays = false;
    /// By identifier; those without are not in it.
    QMap<int, activity> unread;
};
