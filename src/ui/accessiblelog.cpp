// SPDX-License-Identifier: MIT
#include "accessiblelog.h"

#include "logview.h"
#include "spanlook.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The maximum of new lines in a frame that are told.
constexpr qint64 maxTold = 50;

QAccessibleInterface *make(const QString & /*key*/, QObject *object)
{
    auto *log = qobject_cast<logview *>(object);
    return log == nullptr ? nullptr : new accessiblelog(log);
}

/// A few lines of a log. Qt finds words and sentences in a text by asking for all of it, which is far too long
/// where it is a whole log.
class excerpt : public QAccessibleTextInterface
{
public:
    excerpt(const linestore &lines, logplace around)
    {
        const logplace start{std::max(lines.begin(), around.line - 1), 0};
        const qint64 last = std::min(lines.end() - 1, around.line + 1);
        shift = static_cast<int>(lines.charactersBefore(start));
        all = lines.text(start, {last, lines.length(last)});
    }

    using find = QString (QAccessibleTextInterface::*)(int, QAccessible::TextBoundaryType, int *,
                                                       int *) const;

    /// What `f` finds, counted as in the log.
    QString found(find f, int offset, QAccessible::TextBoundaryType type, int *start, int *end) const
    {
        QString text = (this->*f)(offset - shift, type, start, end);
        *start += *start < 0 ? 0 : shift;
        *end += *end < 0 ? 0 : shift;
        return text;
    }

    int characterCount() const override { return static_cast<int>(all.size()); }
    QString text(int start, int end) const override { return all.mid(start, end - start); }

    QString attributes(int, int *, int *) const override { return {}; }
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override {}
    int selectionCount() const override { return 0; }
    void selection(int, int *, int *) const override {}
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    QRect characterRect(int) const override { return {}; }
    int offsetAtPoint(const QPoint &) const override { return 0; }
    void scrollToSubstring(int, int) override {}

private:
    QString all;
    int shift = 0;
};

} // namespace

void accessiblelog::install()
{
    // A factory that is there already is not added again.
    QAccessible::installFactory(make);
}

void accessiblelog::tellNew(logview &log, qint64 first)
{
    if (!QAccessible::isActive())
        return;
    const linestore &lines = log.lines();
    for (qint64 line = std::max(first, lines.end() - maxTold); line < lines.end(); ++line) {
        // The end of the line before it comes with a line.
        const logplace from =
            line == lines.begin() ? logplace{line, 0} : logplace{line - 1, lines.length(line - 1)};
        QAccessibleTextInsertEvent said(&log, static_cast<int>(lines.charactersBefore(from)),
                                        lines.text(from, {line, lines.length(line)}));
        QAccessible::updateAccessibility(&said);
    }
}

void accessiblelog::tellGone(logview &log, qint64 first)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleTextRemoveEvent gone(&log, 0, log.lines().text({log.lines().begin(), 0}, {first, 0}));
    QAccessible::updateAccessibility(&gone);
}

void accessiblelog::tellSelected(logview &log)
{
    if (!QAccessible::isActive())
        return;
    const auto offset = [&log](logplace place) {
        return static_cast<int>(log.lines().charactersBefore(place));
    };
    QAccessibleTextSelectionEvent selected(&log, offset(log.selection().start()),
                                           offset(log.selection().end()));
    QAccessible::updateAccessibility(&selected);
}

accessiblelog::accessiblelog(logview *log) : QAccessibleWidget(log, QAccessible::EditableText), view(log) {}

QAccessible::State accessiblelog::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = true;
    state.multiLine = true;
    state.selectableText = true;
    return state;
}

void *accessiblelog::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface *>(this);
    return QAccessibleWidget::interface_cast(type);
}

logplace accessiblelog::place(int offset) const
{
    return view->lines().placeAfter(offset);
}

int accessiblelog::offset(logplace place) const
{
    return static_cast<int>(view->lines().charactersBefore(place));
}

int accessiblelog::characterCount() const
{
    return offset(view->lines().endPlace());
}

QString accessiblelog::text(int start, int end) const
{
    return view->lines().text(place(start), place(end));
}

QString accessiblelog::textBeforeOffset(int offset, QAccessible::TextBoundaryType type, int *start,
                                        int *end) const
{
    if (view->lines().isEmpty())
        return {};
    return excerpt(view->lines(), place(offset))
        .found(&QAccessibleTextInterface::textBeforeOffset, offset, type, start, end);
}

QString accessiblelog::textAtOffset(int offset, QAccessible::TextBoundaryType type, int *start,
                                    int *end) const
{
    if (view->lines().isEmpty())
        return {};
    return excerpt(view->lines(), place(offset))
        .found(&QAccessibleTextInterface::textAtOffset, offset, type, start, end);
}

QString accessiblelog::textAfterOffset(int offset, QAccessible::TextBoundaryType type, int *start,
                                       int *end) const
{
    if (view->lines().isEmpty())
        return {};
    return excerpt(view->lines(), place(offset))
        .found(&QAccessibleTextInterface::textAfterOffset, offset, type, start, end);
}

// The names are those of IAccessible2, as in Qt's own text widgets.
QString accessiblelog::attributes(int at, int *start, int *end) const
{
    *start = at;
    *end = at;
    if (view->lines().isEmpty())
        return {};
    const logplace there = place(at);
    const int lineStart = at - there.at;
    richspan look;
    // Between two runs the text is plain.
    look.length = view->lines().length(there.line);
    for (const richspan &span : view->lines().spans(there.line)) {
        if (span.start > there.at) {
            look.length = span.start - look.start;
            break;
        }
        if (span.start + span.length > there.at) {
            look = span;
            break;
        }
        look.start = span.start + span.length;
        look.length = view->lines().length(there.line) - look.start;
    }
    *start = lineStart + look.start;
    *end = *start + look.length;
    const QPalette colours = view->palette();
    const QTextCharFormat shown = spanlook(look, colours.text().color(), colours.base().color());
    const auto rgb = [](const char *name, const QColor &colour) {
        return u"%1:rgb(%2,%3,%4);"_s.arg(QLatin1StringView(name))
            .arg(colour.red())
            .arg(colour.green())
            .arg(colour.blue());
    };
    const bool plain = shown.foreground().style() == Qt::NoBrush;
    QString all = rgb("color", plain ? colours.text().color() : shown.foreground().color());
    if (shown.background().style() != Qt::NoBrush)
        all += rgb("background-color", shown.background().color());
    all += (look.styles & richspan::bold) != 0 ? "font-weight:bold;"_L1 : "font-weight:normal;"_L1;
    if ((look.styles & richspan::italic) != 0)
        all += "font-style:italic;"_L1;
    if ((look.styles & richspan::underline) != 0)
        all += "text-underline-style:solid;text-underline-type:single;"_L1;
    if ((look.styles & richspan::strike) != 0)
        all += "text-line-through-type:single;"_L1;
    return all;
}

int accessiblelog::cursorPosition() const
{
    return offset(view->selection().end());
}

int accessiblelog::selectionCount() const
{
    return view->selection().isEmpty() ? 0 : 1;
}

void accessiblelog::selection(int /*index*/, int *start, int *end) const
{
    *start = offset(view->selection().start());
    *end = offset(view->selection().end());
}

void accessiblelog::addSelection(int start, int end)
{
    setSelection(0, start, end);
}

void accessiblelog::removeSelection(int /*index*/)
{
    setSelection(0, 0, 0);
}

void accessiblelog::setSelection(int /*index*/, int start, int end)
{
    view->select(place(std::min(start, end)), place(std::max(start, end)));
}

QRect accessiblelog::characterRect(int offset) const
{
    if (view->lines().isEmpty())
        return {};
    const QRect there = view->rectOf(place(offset));
    return {view->viewport()->mapToGlobal(there.topLeft()), there.size()};
}

int accessiblelog::offsetAtPoint(const QPoint &point) const
{
    return offset(view->placeAt(view->viewport()->mapFromGlobal(point)));
}

void accessiblelog::scrollToSubstring(int start, int /*end*/)
{
    if (!view->lines().isEmpty())
        view->reveal(place(start));
}
