// SPDX-License-Identifier: MIT
#include "tabbar.h"

#include "fingers.h"
#include "fingerstyle.h"
#include "readable.h"

#include <QEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSignalBlocker>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

/// No name in a line of 512 bytes (RFC 1459, 2.3) is longer. The layout of a much longer one takes seconds.
constexpr qsizetype maxLabel = 512;

/// The maximum width of a tab, in letters of average width: two tabs fit on a screen of 240 pixels.
constexpr int maxTabWidth = 14;
QString withoutMnemonic(QString label)
{
    return label.replace(u'&', u"&&"_s);
}

struct look
{
    QRgb colour = 0;
    const char *words = nullptr;
};

/// By tabbar::activity. Teal, blue and red still differ when they are made lighter for a dark desktop, and
/// for people who confuse red and green.
constexpr look looks[] = {
    {0, ""}, {0x008070, ", something happened"}, {0x0000ff, ", new messages"}, {0xde2400, ", for you"}};

/// The width, in pixels, of the mark for activity out of sight.
constexpr int edgeWidth = 5;

} // namespace

tabbar::tabbar(QWidget *parent) : QTabBar(parent)
{
    fingerstyle::apply(this);
    setElideMode(Qt::ElideMiddle);
    setUsesScrollButtons(true);
    setAccessibleName(tr("Conversations"));
    addShortcuts();
    connect(this, &QTabBar::currentChanged, this, &tabbar::emitSelected);
    // A click on the tab in front does not change the current tab, so QTabBar emits nothing but this.
    connect(this, &QTabBar::tabBarClicked, this, [this](int index) {
        if (index == currentIndex())
            emitSelected(index);
    });
}

int tabbar::addTab(const QString &label)
{
    const int id = nextId++;
    // QTabBar makes the first tab the current one and emits its signal before the identifier is set.
    const QSignalBlocker silence(this);
    const int index = QTabBar::addTab({});
    setTabData(index, id);
    nameOf.insert(id, label);
    setLabel(id, label);
    return id;
}

void tabbar::setLabel(int id, const QString &label)
{
    const int index = indexOf(id);
    setTabText(index, withoutMnemonic(label.left(maxLabel)));
    showActivity(index);
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
    const QScopedValueRollback stays(m_frontStays, id != currentTab());
    {
        const QSignalBlocker silence(this);
        QTabBar::removeTab(indexOf(id));
    }
    unread.remove(id);
    nameOf.remove(id);
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
    if (index < 0)
        return;
    unread.remove(currentTab());
    showActivity(index);
    Q_EMIT selected(currentTab());
}

QString tabbar::label(int index) const
{
    return tabText(index).replace(u"&&"_s, u"&"_s);
}

QStringList tabbar::labels() const
{
    QStringList all;
    for (int i = 0; i < count(); ++i)
        all.append(label(i));
    return all;
}

QStringList tabbar::names() const
{
    QStringList all;
    for (int i = 0; i < count(); ++i)
        all.append(nameOf.value(tabData(i).toInt()));
    return all;
}

// --- activity ---

void tabbar::addActivity(int id, activity what)
{
    if (id == currentTab() || what <= unread.value(id))
        return;
    unread[id] = what;
    showActivity(indexOf(id));
    // If the tab is out of sight, the bar must paint a mark.
    update();
}

tabbar::activity tabbar::activityAt(int index) const
{
    return unread.value(tabData(index).toInt());
}

QColor tabbar::colourOf(activity what) const
{
    const QRgb colour = looks[static_cast<int>(what)].colour;
    return colour == 0 ? QColor() : readable(QColor(colour), palette().button().color());
}

void tabbar::showActivity(int index)
{
    setTabTextColor(index, colourOf(activityAt(index)));
    const char *words = looks[static_cast<int>(activityAt(index))].words;
    setAccessibleTabName(index, label(index) + QLatin1StringView(words));
}

QRect tabbar::inSight() const
{
    QRect seen = rect();
    for (const QToolButton *button : findChildren<QToolButton *>()) {
        if (!button->isVisible())
            continue;
        if (button->geometry().center().x() < rect().center().x())
            seen.setLeft(qMax(seen.left(), button->geometry().right() + 1));
        else
            seen.setRight(qMin(seen.right(), button->geometry().left() - 1));
    }
    return seen;
}

void tabbar::paintEvent(QPaintEvent *event)
{
    QTabBar::paintEvent(event);
    const QRect seen = inSight();
    activity left = activity::none;
    activity right = activity::none;
    for (int i = 0; i < count(); ++i) {
        const int middle = tabRect(i).center().x();
        if (middle < seen.left())
            left = qMax(left, activityAt(i));
        else if (middle > seen.right())
            right = qMax(right, activityAt(i));
    }
    QPainter painter(this);
    if (left != activity::none)
        painter.fillRect(seen.left(), seen.top(), edgeWidth, seen.height(), colourOf(left));
    if (right != activity::none)
        painter.fillRect(seen.right() + 1 - edgeWidth, seen.top(), edgeWidth, seen.height(), colourOf(right));
}

QSize tabbar::tabSizeHint(int index) const
{
    const QSize full = QTabBar::tabSizeHint(index);
    return {qMin(full.width(), maxTabWidth * fontMetrics().averageCharWidth()),
            qMax(full.height(), fingerSize)};
}

void tabbar::changeEvent(QEvent *event)
{
    QTabBar::changeEvent(event);
    if (event->type() != QEvent::PaletteChange)
        return;
    for (int i = 0; i < count(); ++i)
        showActivity(i);
}

// --- the keyboard ---

void tabbar::addShortcuts()
{
    const auto add = [this](QKeyCombination keys, auto act) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, act);
    };
    for (const QKeyCombination keys : {Qt::CTRL | Qt::Key_PageDown, Qt::CTRL | Qt::Key_Tab})
        add(keys, [this] { step(1); });
    for (const QKeyCombination keys : {Qt::CTRL | Qt::Key_PageUp, Qt::CTRL | Qt::SHIFT | Qt::Key_Tab})
        add(keys, [this] { step(-1); });
    for (int i = 0; i < 9; ++i)
        add(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + i), [this, i] { setCurrentIndex(i); });
    add(Qt::ALT | Qt::Key_A, [this] { goToActivity(); });
}

void tabbar::step(int by)
{
    setCurrentIndex((currentIndex() + by + count()) % count());
}

void tabbar::goToActivity()
{
    int best = -1;
    for (int i = 1; i < count(); ++i) {
        const int index = (currentIndex() + i) % count();
        if (activityAt(index) > (best < 0 ? activity::none : activityAt(best)))
            best = index;
    }
    setCurrentIndex(best);
}
