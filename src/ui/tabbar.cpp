// SPDX-License-Identifier: MIT
#include "tabbar.h"

#include "fingers.h"
#include "fingerstyle.h"
#include "readable.h"

#include <QEvent>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace {

/// No name in a line of 512 bytes (RFC 1459, 2.3) is longer. One that is would take seconds to lay out.
constexpr qsizetype maxLabel = 512;

/// The widest tab, in letters of the usual width: two of them fit on a screen of 240 pixels.
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

/// In the order of tabbar::news.
constexpr look looks[] = {
    {0, ""}, {0x7755dd, ", something happened"}, {0x0000ff, ", new messages"}, {0xde2400, ", for you"}};

} // namespace

tabbar::tabbar(QWidget *parent) : QTabBar(parent)
{
    fingerstyle::apply(this);
    setElideMode(Qt::ElideMiddle);
    setUsesScrollButtons(true);
    setAccessibleName(tr("Conversations"));
    addShortcuts();
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
    const int index = QTabBar::addTab(withoutMnemonic(label.left(maxLabel)));
    setTabData(index, id);
    showNews(index);
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
    const QScopedValueRollback stays(m_frontStays, id != currentTab());
    {
        const QSignalBlocker silence(this);
        QTabBar::removeTab(indexOf(id));
    }
    unread.remove(id);
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
    showNews(index);
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

// --- news ---

void tabbar::addNews(int id, news what)
{
    if (id == currentTab() || what <= unread.value(id))
        return;
    unread[id] = what;
    showNews(indexOf(id));
}

void tabbar::showNews(int index)
{
    const look &shown = looks[static_cast<int>(unread.value(tabData(index).toInt()))];
    const QColor background = palette().button().color();
    setTabTextColor(index, shown.colour == 0 ? QColor() : readable(QColor(shown.colour), background));
    setAccessibleTabName(index, label(index) + QLatin1StringView(shown.words));
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
        showNews(i);
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
    add(Qt::ALT | Qt::Key_A, [this] { goToNews(); });
}

void tabbar::step(int by)
{
    setCurrentIndex((currentIndex() + by + count()) % count());
}

void tabbar::goToNews()
{
    int best = -1;
    const auto newsAt = [this](int index) { return unread.value(tabData(index).toInt()); };
    for (int i = 1; i < count(); ++i) {
        const int index = (currentIndex() + i) % count();
        if (newsAt(index) > (best < 0 ? news::none : newsAt(best)))
            best = index;
    }
    setCurrentIndex(best);
}
