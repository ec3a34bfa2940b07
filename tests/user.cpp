// SPDX-License-Identifier: MIT
#include "user.h"

#include "chatinput.h"
#include "config.h"
#include "connectbox.h"
#include "ircuserbox.h"
#include "ircview.h"
#include "parlo.h"
#include "preset.h"
#include "richline.h"
#include "tabbar.h"

#include <QAccessible>
#include <QKeySequence>
#include <QListWidget>
#include <QMap>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>
#include <QTextBlock>
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

user::user()
{
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
}

user::~user() = default;

void user::connectTo(quint16 port, const QString &nick, const QString &channels)
{
    preset p;
    p.name = u"test"_s;
    p.nick = nick;
    p.server = u"127.0.0.1"_s;
    p.port = port;
    p.channels = preset::splitChannels(channels);
    preset::save(u"parlo"_s, {p});
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

QStringList user::tabs() const
{
    return m_window->tabBar->labels();
}

QString user::frontTab() const
{
    return tabs().value(m_window->tabBar->currentIndex());
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

// Pages stand in the stack in the order of the tabs.
QWidget *user::pageOf(const QString &tab) const
{
    QList<QWidget *> pages;
    for (int i = 0; i < m_window->widgetStack->count(); ++i)
        pages.append(m_window->widgetStack->widget(i));
    return pages.value(indexOf(tab));
}

void user::select(const QString &tab)
{
    tabbar *bar = m_window->tabBar;
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(indexOf(tab)).center());
}

void user::type(const QString &tab, const QString &text)
{
    edit(tab, text);
    press(tab, u"Return"_s);
}

void user::edit(const QString &tab, const QString &text)
{
    pageOf(tab)->findChild<chatinput *>()->setText(text);
}

void user::press(const QString &tab, const QString &keys)
{
    // A shortcut is heard in the active window alone.
    if (!QTest::qWaitForWindowActive(m_window.get()))
        return;
    for (const QString &key : keys.split(u' ')) {
        const QKeyCombination pressed = QKeySequence::fromString(key)[0];
        QTest::keyClick(tab.isEmpty() ? QApplication::focusWidget() : pageOf(tab)->findChild<chatinput *>(),
                        pressed.key(), pressed.keyboardModifiers());
    }
}

QString user::input(const QString &tab) const
{
    return pageOf(tab)->findChild<chatinput *>()->text();
}

QString user::selected(const QString &tab) const
{
    return pageOf(tab)->findChild<ircview *>()->textCursor().block().text() + u'/' +
           pageOf(tab)->findChild<ircview *>()->textCursor().selectedText();
}

QString user::heard()
{
    QWidget *focus = QApplication::focusWidget();
    if (const auto *list = qobject_cast<QListView *>(focus)) {
        // Nobody tells it of changed rows while no screen reader runs: it must be a new one.
        QAccessible::deleteAccessibleInterface(
            QAccessible::uniqueId(QAccessible::queryAccessibleInterface(focus)));
        const auto *row = QAccessible::queryAccessibleInterface(focus)->child(list->currentIndex().row());
        return row == nullptr ? QString() : row->text(QAccessible::Name);
    }
    const bool red = focus->palette().text().color().red() > 0;
    return QAccessible::queryAccessibleInterface(focus)->text(QAccessible::Description) +
           (red ? u", in red"_s : u""_s);
}

QString user::news(const QString &tab) const
{
    const tabbar *bar = m_window->tabBar;
    const int index = indexOf(tab);
    const bool coloured = bar->tabTextColor(index) != bar->palette().color(QPalette::WindowText);
    return coloured ? bar->accessibleTabName(index).mid(tabs().at(index).size() + 2) : QString();
}

void user::click(const QString &tab, const QString &what)
{
    if (auto *button = pageOf(tab)->findChild<QPushButton *>(); button->text() == what)
        return QTest::mouseClick(button, Qt::LeftButton);
    auto *list = pageOf(tab)->findChild<ircuserbox *>();
    const QModelIndexList found = list->model()->match(list->model()->index(0, 0), Qt::DisplayRole, what);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(found.value(0)).center());
}

void user::choose(const QString &tab, const QString &nick)
{
    click(tab, nick);
    auto *list = pageOf(tab)->findChild<ircuserbox *>();
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->currentIndex()).center());
}

QStringList user::lines(const QString &tab) const
{
    const QWidget *page = pageOf(tab);
    if (page == nullptr)
        return {};
    const auto *document = page->findChild<ircview *>()->document();
    const QString text = document->toPlainText().remove(richline::breakHere);
    return document->isEmpty() ? QStringList() : text.split(u'\n');
}

// Kept with the page, so that it goes with its tab.
int user::linesRead(const QString &tab) const
{
    const QWidget *page = pageOf(tab);
    return page == nullptr ? 0 : page->property("linesRead").toInt();
}

QString user::nextLine(const QString &tab)
{
    if (!QTest::qWaitFor([&] { return lines(tab).size() > linesRead(tab); }))
        return {};
    const int next = linesRead(tab);
    pageOf(tab)->setProperty("linesRead", next + 1);
    return lines(tab).at(next);
}

QStringList user::unreadLines() const
{
    QStringList unread;
    QMap<QString, int> copies;
    for (QString tab : tabs()) {
        if (const int copy = ++copies[tab]; copy > 1)
            tab += u'/' + QString::number(copy);
        const QStringList rest = lines(tab).mid(linesRead(tab));
        for (const QString &line : rest)
            unread.append(tab + u": " + line);
    }
    return unread;
}

QString user::members(const QString &tab) const
{
    const QAbstractItemModel *rows = pageOf(tab)->findChild<ircuserbox *>()->model();
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
