// SPDX-License-Identifier: MIT
#include "user.h"

#include "config.h"
#include "connectbox.h"
#include "ircuserbox.h"
#include "preset.h"
#include "settingsbox.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QKeySequence>
#include <QListWidget>
#include <QMap>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

bool user::picture(QWidget &window, const QString &name)
{
    const QTemporaryDir scratch;
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        return false;
    const QString file = qEnvironmentVariable("PICTURES", scratch.path()) + u'/' + name;
    QCoreApplication::processEvents();
    bool saved = window.grab().save(file + u".png");
    const QPalette light = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(0x30, 0x30, 0x30)));
    QCoreApplication::processEvents();
    saved = window.grab().save(file + u"-dark.png") && saved;
    QApplication::setPalette(light);
    return saved;
}

QStringList user::nameless(const QWidget &window)
{
    QStringList classes;
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        const QAccessibleInterface *heard = QAccessible::queryAccessibleInterface(widget);
        if ((widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr &&
            heard != nullptr && heard->text(QAccessible::Name).isEmpty())
            classes.append(QString::fromLatin1(widget->metaObject()->className()));
    }
    return classes;
}

void user::connectTo(const QString &server, quint16 port, const QString &nick, const QString &channels,
                     const QMap<QString, QString> &more)
{
    preset p;
    p.name = u"test"_s;
    p.server = server;
    p.port = port;
    p.nick = nick;
    p.channels = preset::splitChannels(channels);
    preset::save(u"parlo"_s, {p});
    {
        Config file(u"parlo"_s);
        file.setGroup(u"Preset0"_s);
        for (auto entry = more.begin(); entry != more.end(); ++entry)
            file.writeEntry(entry.key(), entry.value());
    }
    // The dialog is modal: this runs inside of it.
    QTimer::singleShot(0, [] {
        auto *dialog = qobject_cast<connectbox *>(QApplication::activeModalWidget());
        dialog->findChild<QListWidget *>()->setCurrentRow(0);
        dialog->ConnectButtonPush();
    });
    m_window.reset();
    m_window = std::make_unique<parlo>();
    if (!m_window->testAttribute(Qt::WA_Resized))
        m_window->resize(240, 320);
    m_window->show();
}

QByteArray user::file(const QString &name) const
{
    QFile file(home.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

int user::indexOf(const QString &tab) const
{
    const int copy = qMax(1, tab.section(u'/', 1).toInt());
    const QStringList names = tabs();
    qsizetype index = -1;
    for (int i = 0; i < copy; ++i)
        index = names.indexOf(tab.section(u'/', 0, 0), index + 1);
    return static_cast<int>(index);
}

void user::select(const QString &tab)
{
    tabbar *bar = m_window->tabBar;
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(indexOf(tab)).center());
}

void user::press(const QString &tab, const QString &keys)
{
    // A shortcut works in the active window only; below a prompt no key reaches it.
    QWidget *window = m_window->findChild<settingsbox *>();
    if (window == nullptr || !window->isVisible())
        window = m_window.get();
    window->activateWindow();
    QWidget *prompt = QApplication::activeModalWidget();
    if ((prompt != nullptr && prompt != window) ||
        !QTest::qWaitFor([&] { return QApplication::activeWindow() == window; }))
        return;
    for (const QString &key : keys.split(u' ')) {
        QWidget *to = tab.isEmpty() ? QApplication::focusWidget() : in<chatinput>(tab);
        const QKeyCombination pressed = QKeySequence::fromString(key)[0];
        // QTest has no other keys.
        if (to != nullptr && ((pressed.key() >= Qt::Key_Space && pressed.key() <= Qt::Key_AsciiTilde) ||
                              (pressed.key() >= Qt::Key_Escape && pressed.key() <= Qt::Key_PageDown)))
            QTest::keyClick(to, pressed.key(), pressed.keyboardModifiers());
    }
}

QString user::selected(const QString &tab) const
{
    return in<ircview>(tab)->selectedLine() + u'/' + in<ircview>(tab)->selection().text();
}

QString user::heard()
{
    QWidget *focus = QApplication::focusWidget();
    if (const auto *list = qobject_cast<QListView *>(focus)) {
        // Without a screen reader it is not updated when rows change, so a new one is made.
        QAccessible::deleteAccessibleInterface(
            QAccessible::uniqueId(QAccessible::queryAccessibleInterface(focus)));
        const auto *row = QAccessible::queryAccessibleInterface(focus)->child(list->currentIndex().row());
        return row == nullptr ? QString() : row->text(QAccessible::Name);
    }
    const bool red = focus->palette().text().color().red() > 0;
    return QAccessible::queryAccessibleInterface(focus)->text(QAccessible::Description) +
           (red ? u", in red"_s : u""_s);
}

QString user::activity(const QString &tab) const
{
    const tabbar *bar = m_window->tabBar;
    const int index = indexOf(tab);
    const bool coloured = bar->tabTextColor(index) != bar->palette().color(QPalette::WindowText);
    return coloured ? bar->accessibleTabName(index).mid(tabs().at(index).size() + 2) : QString();
}

void user::click(const QString &tab, const QString &what)
{
    if (auto *button = in<QPushButton>(tab); button->text() == what)
        return QTest::mouseClick(button, Qt::LeftButton);
    auto *list = in<ircuserbox>(tab);
    const QModelIndexList found = list->model()->match(list->model()->index(0, 0), Qt::DisplayRole, what);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(found.value(0)).center());
}

void user::choose(const QString &tab, const QString &nick)
{
    click(tab, nick);
    auto *list = in<ircuserbox>(tab);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->currentIndex()).center());
}

QStringList user::menu(const QString &tab, const QString &nick, const QString &chosen)
{
    click(tab, nick);
    auto *list = in<ircuserbox>(tab);
    const QPoint point = list->visualRect(list->currentIndex()).center();
    QContextMenuEvent wanted(QContextMenuEvent::Mouse, point, list->viewport()->mapToGlobal(point));
    QApplication::sendEvent(list->viewport(), &wanted);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QStringList entries;
    for (QAction *entry : menu->actions()) {
        if (!entry->isEnabled() || entry->isSeparator())
            continue;
        entries += entry->text().remove(u'&');
        if (entries.last() == chosen)
            entry->trigger();
    }
    menu->close();
    return entries;
}

QString user::looks(const QString &tab) const
{
    const int larger = in<ircview>(tab)->font().pointSize() - m_window->font().pointSize();
    return QString::asprintf("%dx%d %+d %s%s", m_window->width(), m_window->height(), larger,
                             in<ircuserbox>(tab)->width() > 0 ? "shown" : "hidden",
                             in<ircview>(tab)->showsTimes() ? " times" : "");
}

// The number of read lines is a property of the page, so that it is deleted with the page.
QString user::takeLine(QWidget *page)
{
    if (page == nullptr)
        return {};
    const linestore &log = page->findChild<ircview *>()->lines();
    const qint64 next = page->property("linesRead").toLongLong();
    if (next >= log.end())
        return {};
    page->setProperty("linesRead", next + 1);
    return u""_s + log.text(next);
}

QString user::nextLine(const QString &tab)
{
    QString line;
    return QTest::qWaitFor([&] { return !(line = takeLine(pageOf(tab))).isNull(); }) ? line : QString();
}

QStringList user::unreadLines()
{
    QStringList unread;
    for (int i = 0; i < tabs().size(); ++i) {
        QWidget *page = m_window->widgetStack->widget(i);
        for (QString line = takeLine(page); !line.isNull(); line = takeLine(page))
            unread.append(tabs().at(i) + u": " + line);
    }
    return unread;
}

QString user::members(const QString &tab) const
{
    const QAbstractItemModel *rows = in<ircuserbox>(tab)->model();
    const QMap<QRgb, QString> signs{
        {qRgb(0x11, 0xbb, 0x22), u"@"_s}, {qRgb(0x00, 0xff, 0xff), u"%"_s}, {qRgb(0xee, 0xee, 0x22), u"+"_s}};
    QStringList members;
    for (int row = 0; row < rows->rowCount(); ++row) {
        const QModelIndex index = rows->index(row, 0);
        const QImage ball = index.data(Qt::DecorationRole).value<QPixmap>().toImage();
        members.append((ball.isNull() ? QString() : signs.value(ball.pixel(2, 7), u"?"_s)) +
                       index.data().toString());
    }
    return members.join(u' ');
}
