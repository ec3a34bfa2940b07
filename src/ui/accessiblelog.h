// SPDX-License-Identifier: MIT
#pragma once

#include "linestore.h"

#include <QAccessibleWidget>

class logview;

/// A log as a screen reader gets it: a read-only text of many lines. Places are counted in characters from the
/// first line that is kept, with a line end behind each line but the last.
class accessiblelog : public QAccessibleWidget, public QAccessibleTextInterface
{
public:
    /// Makes Qt use this for every logview.
    static void install();

    /// Tells screen readers about new lines from `first` on, and about the removal of those before `first`.
    static void tellNew(logview &log, qint64 first);
    static void tellGone(logview &log, qint64 first);
    /// Tells them that the selection has changed.
    static void tellSelected(logview &log);

    explicit accessiblelog(logview *log);

    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    using QAccessibleWidget::text;
    int characterCount() const override;
    QString text(int start, int end) const override;
    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType type, int *start,
                             int *end) const override;
    QString textAtOffset(int offset, QAccessible::TextBoundaryType type, int *start, int *end) const override;
    QString textAfterOffset(int offset, QAccessible::TextBoundaryType type, int *start,
                            int *end) const override;
    QString attributes(int offset, int *start, int *end) const override;

    int cursorPosition() const override;
    void setCursorPosition(int /*position*/) override {}
    int selectionCount() const override;
    void selection(int index, int *start, int *end) const override;
    void addSelection(int start, int end) override;
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;

    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint &point) const override;
    void scrollToSubstring(int start, int end) override;

private:
    logplace place(int offset) const;
    int offset(logplace place) const;

    logview *view;
};
