// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QStringList>
#include <QTabBar>

/// A tab bar whose tabs keep their identifier. QTabBar's own indices change when a tab is removed.
///
/// The colour of a tab's text shows its activity until it is selected. While the tab is scrolled out of
/// sight, a mark at that end of the bar shows it. Ctrl+PageUp, Ctrl+PageDown and Ctrl+Tab walk through the
/// tabs, Alt+1 to Alt+9 go to one, Alt+A to the next one with the most urgent activity.
class tabbar : public QTabBar
{
    Q_OBJECT

public:
    /// What has happened in a tab while it was not in front, the least urgent first.
    enum class activity { none, event, message, personal };

    explicit tabbar(QWidget *parent);

    /// Adds a tab with exactly this label and returns its identifier.
    int addTab(const QString &label);
    /// What a tab is called from now on.
    void setLabel(int id, const QString &label);
    void setCurrentTab(int id);
    /// The identifier of the tab in front, or -1.
    int currentTab() const;
    /// Removes a tab, then emits selected() for the tab in front, even if that has not changed.
    void removeTab(int id);
    /// Whether selected() is emitted only because another tab was removed. The tab in front is the same as
    /// before.
    bool frontStays() const { return m_frontStays; }
    /// The labels, from left to right; and what the tabs were called when they were added.
    QStringList labels() const;
    QStringList names() const;
    /// Marks a tab, unless it is in front or marked with something more urgent.
    void addActivity(int id, activity what);

Q_SIGNALS:
    /// This tab has been brought to the front, or was there when the user clicked it.
    void selected(int id);

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    /// As wide as the label, up to a maximum: longer labels are cut in the middle, and the bar scrolls tabs
    /// that do not fit.
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
    /// Readable on this bar; invalid for `none`.
    QColor colourOf(activity what) const;
    /// Shows the activity of the tab at `index`, by colour and for a screen reader.
    void showActivity(int index);
    /// The part of the bar that shows tabs, which is not covered by the scroll buttons.
    QRect inSight() const;

    int nextId = 0;
    QMap<int, QString> nameOf;
    bool m_frontStays = false;
    /// By identifier; tabs without activity are not in it.
    QMap<int, activity> unread;
};
