// SPDX-License-Identifier: MIT
//
// What a tab makes of texts: control codes, markup, addresses; the member list and the tab bar. Its log is in tst_log.

#include "channeltab.h"
#include "fingers.h"
#include "ircchannel.h"
#include "ircuserbox.h"
#include "ircview.h"
#include "isupport.h"
#include "richline.h"
#include "rows.h"
#include "tabbar.h"
#include "tabwindow.h"
#include "weblink.h"
#include "widthhandle.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

static void compare(QString (*read)(const QString &))
{
    QFETCH(const QString, input);
    QTEST(read(input), "expected");
}

static QString runsOf(const QString &markup)
{
    const richline line(markup);
    QString seen = line.text();
    for (const richspan &span : line.spans())
        seen +=
            QString::asprintf(" %d+%d:%06x/%d", span.start, span.length, span.colour & 0xffffff, span.styles);
    return seen;
}

static QString addressAt(const QString &marked)
{
    const qsizetype place = marked.indexOf(u'|');
    return weblink(QString(marked).remove(place, 1), place).toString();
}

static bool shows(QWidget *widget, const QColor &colour, const QRect &part)
{
    const QImage seen = widget->grab(part).toImage();
    bool found = false;
    for (int i = 0; i < seen.width() * seen.height(); ++i)
        found |= seen.pixelColor(i % seen.width(), i / seen.width()) == colour;
    return found;
}

class tst_view : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("XDG_CONFIG_HOME", home.path().toUtf8()); }
    void init();
    void controlCodes_data() { addRows("control-codes"); }
    void controlCodes() { compare(ircview::ircToHtml); }
    void markup_data() { addRows("markup"); }
    void markup() { compare(runsOf); }
    void addresses_data() { addRows("addresses"); }
    void addresses() { compare(addressAt); }
    void members();
    void heldMembers();
    void width();
    void state();
    void news();

private:
    QTemporaryDir home;
    ircchannel channel{u"#c"_s, isupport::classic()};
    std::unique_ptr<tabwindow> window;
    std::unique_ptr<channeltab> tab;
};

void tst_view::init()
{
    tab.reset();
    window = std::make_unique<tabwindow>();
    window->tabBar = new tabbar(window.get());
    window->widgetStack = new QStackedWidget(window.get());
    window->setCentralWidget(window->widgetStack);
    tab = std::make_unique<channeltab>(window.get(), &channel, u"#c"_s);
    window->resize(320, 320);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
}

void tst_view::members()
{
    QStringList names{u"@alice"_s, u"%bob"_s, u"+<b>"_s};
    channel.names(&names);
    for (const bool touch : {false, true}) {
        const std::unique_ptr<QPointingDevice> screen(touch ? QTest::createTouchDevice() : nullptr);
        init();
        tab->endofnames();
        tab->userBox->takePending();
        // The ranks differ above the balls, where their colour is not.
        QList<QImage> signs;
        for (int row = 0; row < 3; ++row) {
            const QRect place = tab->userBox->visualRect(tab->userBox->model()->index(row, 0));
            QCOMPARE(place.height() >= fingerSize, touch);
            signs.append(
                tab->userBox->viewport()->grab({0, place.top(), 12, place.height() / 2 - 2}).toImage());
        }
        QVERIFY(signs[0] != signs[1] && signs[1] != signs[2] && signs[2] != signs[0]);
        QCOMPARE(tab->toggleButton->height() >= fingerSize, touch);
    }
    const QModelIndex hostile = tab->userBox->model()->index(2, 0);
    QCOMPARE(hostile.data(Qt::ToolTipRole).toString(), u"<qt>&lt;b&gt;, voiced</qt>"_s);
}

// A finger that lifts after a long press asks for a query; one that stays gets the menu, which outlives the member.
void tst_view::heldMembers()
{
    QStringList names{u"a&\u202eb\tc"_s};
    channel.clear();
    channel.names(&names);
    tab->endofnames();
    tab->userBox->takePending();
    const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
    QWidget *list = tab->userBox->viewport();
    const QPoint point = tab->userBox->visualRect(tab->userBox->model()->index(0, 0)).center();
    QSignalSpy asked(tab->userBox, &ircuserbox::asked);
    const auto *held = tab->userBox->findChild<QTimer *>();
    QTest::touchEvent(list, screen.get()).press(0, point);
    QTRY_VERIFY(held->isActive());
    channel.clear();
    tab->userBox->fill(&channel);
    tab->userBox->takePending();
    QTest::touchEvent(list, screen.get()).release(0, point);
    QCOMPARE(asked.value(0), QVariantList({QVariant::fromValue(memberaction::query), names.first()}));
    channel.names(&names);
    tab->endofnames();
    tab->userBox->takePending();
    QTest::touchEvent(list, screen.get()).press(0, point);
    QTRY_VERIFY(QApplication::activePopupWidget() != nullptr);
    QTest::touchEvent(list, screen.get()).release(0, point);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QCOMPARE(menu->actions().at(0)->text(), u"\u2068a&&\u202eb c\u202c\u2069"_s);
    channel.clear();
    tab->userBox->fill(&channel);
    tab->userBox->takePending();
    menu->actions().at(2)->trigger();
    QCOMPARE(asked.size(), 2);
    QCOMPARE(asked.last(), QVariantList({QVariant::fromValue(memberaction::query), names.first()}));
}

// A wide window has a handle beside the list; a small one is as it was.
void tst_view::width()
{
    auto *handle = tab->page->findChild<widthhandle *>();
    QVERIFY(!handle->isVisible());
    QCOMPARE(tab->userBox->width(), 70);
    window->resize(900, 300);
    QTRY_VERIFY(handle->isVisible());
    QCOMPARE(tab->userBox->width(), 70);
    for (const auto &[by, width] : {std::pair(-100, 170), {60, 110}, {-2000, 450}, {2000, 70}, {-30, 100}}) {
        QTest::mousePress(handle, Qt::LeftButton, {}, {2, 50});
        QTest::mouseMove(handle, {2 + by, 50});
        QTest::mouseRelease(handle, Qt::LeftButton, {}, {2 + by, 50});
        QTRY_COMPARE(tab->userBox->width(), width);
    }
    QTest::keyClick(handle, Qt::Key_Left);
    QTRY_COMPARE(tab->userBox->width(), 110);
    tab->showHideUserlist();
    QVERIFY(!handle->isVisible() && tab->userBox->maximumWidth() == 0);
    tab->showHideUserlist();
    window->resize(320, 300);
    QTRY_COMPARE(tab->userBox->width(), 70);
    tab.reset();
    window.reset();
    init();
    window->resize(900, 300);
    QTRY_COMPARE(tab->userBox->width(), 110);
}

// What cannot be read in full is cut in its middle, and a screen reader gets all of it.
void tst_view::state()
{
    const QString refused = u"a-server-with-a-long-name.example.org refused port 6667"_s;
    tab->setState(refused);
    const auto seen = [this] { return tab->input->placeholderText(); };
    QVERIFY(seen().startsWith(u"a-server"_s) && seen().endsWith(u"6667"_s) && seen().contains(u'\u2026'));
    QVERIFY(tab->input->fontMetrics().horizontalAdvance(seen()) < tab->input->contentsRect().width() - 4);
    QCOMPARE(tab->input->accessibleDescription(), refused);
    window->resize(900, 300);
    QTRY_COMPARE(seen(), refused);
    tab->setState({});
    QCOMPARE(seen() + tab->input->accessibleDescription(), QString());
}

void tst_view::news()
{
    tabbar *bar = window->tabBar;
    for (int i = 1; i < 12; ++i)
        bar->addTab(u"#channel"_s);
    bar->resize(240, 40);
    using enum tabbar::activity;
    for (const auto &[id, what] : {std::pair(3, event), {4, message}, {10, personal}})
        bar->addActivity(id, what);
    for (const QColor background : {QColor(0xef, 0xef, 0xef), QColor(0x30, 0x30, 0x30)}) {
        bar->setPalette(QPalette(background));
        for (const auto &[a, b] : {std::pair(3, 4), {4, 10}, {10, 3}}) {
            const int apart = qAbs(bar->tabTextColor(a).hue() - bar->tabTextColor(b).hue());
            QVERIFY2(qMin(apart, 360 - apart) >= 60, qPrintable(QString::number(apart)));
        }
        // What is out of sight marks its end of the bar, by what is most urgent there.
        for (const auto &[front, left, right] :
             {std::tuple(0, false, true), {7, true, true}, {11, true, false}}) {
            bar->setCurrentTab(front);
            QCOMPARE(shows(bar, bar->tabTextColor(4), {0, 0, 8, 3}), left);
            QCOMPARE(shows(bar, bar->tabTextColor(10), {160, 0, 80, 3}), right);
        }
    }
}

QTEST_MAIN(tst_view)
#include "tst_view.moc"
