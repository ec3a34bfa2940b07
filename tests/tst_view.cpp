// SPDX-License-Identifier: MIT
//
// A tab on the screen: control codes, what becomes of markup, what the view shows, what the mouse and a finger do to
// it, the search, the member list, the tab bar.

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

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QMimeData>
#include <QPushButton>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>

#include <fcntl.h>
#include <sys/stat.h>

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
    void init();
    void cleanupTestCase() { QDesktopServices::unsetUrlHandler(u"http"_s); }
    void controlCodes_data() { addRows("control-codes"); }
    void controlCodes() { compare(ircview::ircToHtml); }
    void markup_data() { addRows("markup"); }
    void markup() { compare(runsOf); }
    void addresses_data() { addRows("addresses"); }
    void addresses() { compare(addressAt); }
    void hostileText_data();
    void hostileText();
    void looks();
    void layout();
    void mouseAndFinger();
    void finds();
    void members();
    void news();
    // What the view opens comes here instead of into a browser.
    void open(const QUrl &url) { opened.append(url.toString()); }

private:
    bool isLaidOut() const { return view->document()->lastBlock().layout()->lineCount() > 0; }
    /// The runs of a line as they are drawn: start+length, colour, weight, underline.
    QString drawn(int line) const;
    /// The place of the last `text`, behind its first character.
    QPoint placeOf(const QString &text) const;

    ircchannel channel{u"#c"_s, isupport::classic()};
    std::unique_ptr<tabwindow> window;
    std::unique_ptr<channeltab> tab;
    ircview *view = nullptr;
    QStringList opened;
};

void tst_view::init()
{
    QDesktopServices::setUrlHandler(u"http"_s, this, "open");
    opened.clear();
    tab.reset();
    window = std::make_unique<tabwindow>();
    window->tabBar = new tabbar(window.get());
    window->widgetStack = new QStackedWidget(window.get());
    window->setCentralWidget(window->widgetStack);
    tab = std::make_unique<channeltab>(window.get(), &channel, u"#c"_s);
    view = tab->view;
    window->resize(320, 320);
    window->show();
    QTRY_VERIFY(isLaidOut());
}

QString tst_view::drawn(int line) const
{
    QString runs;
    for (const auto &run : view->document()->findBlockByNumber(line).layout()->formats())
        runs += QString::asprintf(" %d+%d%s/%d/%d", run.start, run.length,
                                  qPrintable(run.format.foreground().color().name()), run.format.fontWeight(),
                                  run.format.fontUnderline());
    return runs.mid(1);
}

QPoint tst_view::placeOf(const QString &text) const
{
    const QTextDocument *document = view->document();
    QTextCursor there = document->find(text, document->characterCount(), QTextDocument::FindBackward);
    there.setPosition(there.selectionStart() + 1);
    return view->cursorRect(there).center();
}

void tst_view::hostileText_data()
{
    addRows("hostile");
    const auto row = [](const QString &text, const QString &seen) {
        QTest::addRow("%d: %s", static_cast<int>(text.size()), qPrintable(text.left(4))) << text << seen;
    };
    // Each of the first would be searched for its end to the end of the line.
    for (const QString &piece :
         {u"<a"_s, u"&#"_s, u"<"_s, u"\u007f"_s, u"\u0085"_s, u"\u009b"_s, u"\u0300"_s, u"\u0628"_s,
          u"\u1100"_s, u"\u200d"_s, u"\u200f"_s, u"\u202e"_s, u"\u2066"_s, u"\ufeff"_s}) {
        const QString many = piece.repeated(piece.front() < u'\x7f' ? 200'000 : 2000);
        row(many, many);
        row(many + u" <>", piece == u"<a" ? QString() : many + u" <>");
    }
    row(QString(2000, richline::breakHere), {});
    for (const int deep : {16, 60, 500})
        row(u"<table><tr><td>"_s.repeated(deep) + u'x', u"x"_s);
    row(u"&lt;"_s.repeated(100'000), u"<"_s.repeated(100'000));
}

// Nothing is opened, and the lines before and after it are as they were.
void tst_view::hostileText()
{
    QFETCH(QString, input);
    QFETCH(const QString, expected);
    const QTemporaryDir folder;
    const QByteArray fifo = QFile::encodeName(folder.filePath(u"fifo"_s));
    QCOMPARE(mkfifo(fifo.constData(), 0600), 0);
    input.replace(u"$FIFO"_s, QFile::decodeName(fifo));
    view->message(u"<b>before</b>"_s);
    view->message(input);
    view->addLine(input);
    view->message(u"after"_s);
    QTRY_VERIFY(isLaidOut());
    view->grab();
    // Nobody has the FIFO open; and who had opened it in the usual way would still hang there.
    QCOMPARE(::open(fifo.constData(), O_WRONLY | O_NONBLOCK), -1);
    const QString shown = view->toPlainText().remove(richline::breakHere);
    QCOMPARE(shown, QString(u"- before\n- " + expected + u'\n' + expected + u"\n- after"));
    for (QTextBlock block = view->document()->begin(); block.isValid(); block = block.next())
        QVERIFY(!block.textList() && block.blockFormat().propertyCount() == 0);
}

void tst_view::looks()
{
    view->privmsg(u"bob"_s, u"\2hi\2 \37u"_s);
    // Painting in the middle of an edit loses nothing of it.
    view->grab();
    view->message(u"plain"_s);
    QTRY_COMPARE(drawn(1), u"0+1#dd8888/400/0"_s);
    // Where the user's own cursor stands makes no difference to what comes next.
    view->moveCursor(QTextCursor::Start);
    view->moveCursor(QTextCursor::Right);
    view->nick(u"a"_s, u"b"_s);
    view->addLine(u"\r\n"_s);
    view->addLine(u"<b>x</b>\r\n\r"_s);
    QTRY_COMPARE(drawn(4), u"0+1#000000/700/0"_s);
    QCOMPARE(view->toPlainText(), u"<bob> hi u\n- plain\na is now known as b\n\nx"_s);
    QCOMPARE(drawn(2), QString());
    for (QTextBlock block = view->document()->begin(); block.isValid(); block = block.next())
        QCOMPARE(block.layout()->lineAt(0).textLength(), block.length() - 1);
    const QString light = u"1+3#0000ff/400/0 6+2#000000/700/0 9+1#000000/400/1"_s;
    QCOMPARE(drawn(0), light);
    QVERIFY(shows(view, Qt::blue, view->rect()));
    view->setPalette(QPalette(QColor(0x30, 0x30, 0x30)));
    QTRY_VERIFY(drawn(0) != light);
    const QColor nick(drawn(0).mid(3, 7));
    QVERIFY(nick.lightness() > 150 && nick.blue() > nick.red());
    view->setPalette({});
    QTRY_COMPARE(drawn(0), light);
}

void tst_view::layout()
{
    QScrollBar *bar = view->verticalScrollBar();
    const auto atBottom = [&] {
        QTextCursor end(view->document());
        end.movePosition(QTextCursor::End);
        const bool seen = view->viewport()->rect().contains(view->cursorRect(end).center());
        return seen && bar->maximum() > 0 && bar->value() == bar->maximum();
    };
    // A line's text is there at once; its layout waits for someone to look.
    for (int i = 0; i < 2000; ++i) {
        view->addLine(u"line %1 that is <b>long enough</b> to be wrapped a little, I hope"_s.arg(i));
        QVERIFY(view->document()->lastBlock().text().startsWith(u"line %1 "_s.arg(i)));
    }
    QTRY_VERIFY(atBottom());
    bar->setValue(0);
    view->addLine(u"x"_s.repeated(2000));
    QTRY_VERIFY(atBottom());
    int laidOut = 0;
    for (QTextBlock block = view->document()->begin(); block.isValid(); block = block.next())
        laidOut += block.layout()->lineCount() > 0 ? 1 : 0;
    QVERIFY2(laidOut < 200, qPrintable(QString::number(laidOut)));
    // Lines of all heights, and both sides change: the bottom is found even though every line is laid out anew.
    for (int i = 0; i < 14; ++i)
        view->addLine(u"word "_s.repeated(i * 7 % 30));
    for (const QSize &size : {QSize(190, 150), QSize(370, 120), QSize(270, 360), QSize(440, 410),
                              QSize(230, 350), QSize(370, 350), QSize(230, 410)}) {
        window->resize(size);
        QTRY_VERIFY(atBottom());
    }
    QVERIFY(!view->horizontalScrollBar()->isVisible() && !view->textCursor().hasSelection());
    view->selectAll();
    const QString selected = view->textCursor().selectedText();
    view->addLine(u"more"_s);
    QTRY_COMPARE(view->textCursor().selectedText(), selected);
    view->copy();
    QCOMPARE(QApplication::clipboard()->text(), view->toPlainText().remove(richline::breakHere).chopped(5));
    QVERIFY(!QApplication::clipboard()->mimeData()->hasHtml());
    QTRY_VERIFY(atBottom());
}

void tst_view::mouseAndFinger()
{
    for (int i = 0; i < 100; ++i)
        view->message(QString::number(i));
    const QString address = u"http://a.example/"_s + QString(300, u'x');
    view->message(address + u" and words");
    view->message(u"http://b.example"_s);
    QTRY_VERIFY(isLaidOut());
    QWidget *seen = view->viewport();
    const QPoint link = placeOf(u"a.example"_s);
    const QPoint other = placeOf(u"b.example"_s);
    QTest::mouseMove(seen, placeOf(u"and"_s));
    QCOMPARE(seen->cursor().shape(), Qt::IBeamCursor);
    QTest::mouseMove(seen, link);
    QCOMPARE(seen->cursor().shape(), Qt::PointingHandCursor);
    QTest::mouseClick(seen, Qt::LeftButton, {}, placeOf(u"words"_s));
    QTest::mouseClick(seen, Qt::RightButton, {}, link);
    QCOMPARE(opened, QStringList());
    QTest::mouseClick(seen, Qt::LeftButton, {}, link);
    QCOMPARE(opened, QStringList(address));
    QTest::mouseDClick(seen, Qt::LeftButton, {}, placeOf(u"words"_s));
    QTest::mouseRelease(seen, Qt::LeftButton, {}, placeOf(u"words"_s));
    QCOMPARE(QApplication::clipboard()->text(), u"words"_s);
    // Qt would begin to drag what is selected under these.
    for (const auto keys : {Qt::KeyboardModifiers(), Qt::ControlModifier | Qt::ShiftModifier}) {
        view->selectAll();
        QTest::mousePress(seen, Qt::LeftButton, keys, link);
        QVERIFY(!view->textCursor().hasSelection());
        QTest::mouseRelease(seen, Qt::LeftButton, keys, other);
    }

    // A tap opens as well; a finger that moves scrolls and selects nothing.
    const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
    view->moveCursor(QTextCursor::Start);
    view->scrollToBottom();
    QTest::touchEvent(seen, screen.get()).press(0, link);
    QTest::touchEvent(seen, screen.get()).release(0, link);
    QCOMPARE(opened, QStringList({address, address}));
    const int before = view->verticalScrollBar()->value();
    QTest::touchEvent(seen, screen.get()).press(0, QPoint(50, 50));
    for (int y = 60; y <= 250; y += 10)
        QTest::touchEvent(seen, screen.get()).move(0, QPoint(50, y));
    QTest::touchEvent(seen, screen.get()).release(0, QPoint(50, 250));
    QTRY_VERIFY(view->verticalScrollBar()->value() < before - 5);
    QVERIFY(!view->textCursor().hasSelection());

    // What a line scrolls under the pointer before the button goes down, or while it is down, is not opened.
    view->scrollToBottom();
    view->message(u"http://c.example"_s);
    QTest::mouseClick(seen, Qt::LeftButton, {}, other);
    QTest::mousePress(seen, Qt::LeftButton, {}, other);
    view->message(u"http://d.example"_s);
    view->scrollToBottom();
    QTest::mouseRelease(seen, Qt::LeftButton, {}, other);
    QCOMPARE(opened.size(), 2);
}

// Case does not count, and what is not found moves nothing.
void tst_view::finds()
{
    for (int i = 0; i < 100; ++i)
        view->addLine(u"line %1"_s.arg(i));
    QVERIFY(view->findText(u"LINE 50"_s, false));
    view->verticalScrollBar()->setValue(7);
    for (const bool newer : {false, true})
        QVERIFY(!view->findText(u"x"_s, newer));
    QCOMPARE(view->verticalScrollBar()->value(), 7);
    QCOMPARE(view->selectedLine(), u"line 50"_s);
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
