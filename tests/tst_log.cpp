// SPDX-License-Identifier: MIT
//
// The log of a tab: what a reader sees, hears, selects, opens and finds in it, and what that costs.

#include "ircview.h"
#include "linkwalk.h"
#include "manners.h"
#include "richline.h"
#include "rows.h"
#include "spanlook.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QToolButton>

#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

class tst_log : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanupTestCase() { QDesktopServices::unsetUrlHandler(u"http"_s); }
    void hostileText_data();
    void hostileText();
    void looks();
    void moreLooks();
    void looksAsEver();
    void scrollsPixels();
    void staysAtTheBottom();
    void costsWhatIsSeen();
    void mouseAndFinger();
    void links();
    void pastAndForUs();
    void isHeard();
    void timesAndMarks();
    void keepsPlaceAndFewLines();
    void finds();
    // What the view opens comes here instead of into a browser.
    void open(const QUrl &url) { opened.append(url.toString(QUrl::FullyEncoded)); }

private:
    QString text() const { return view->lines().text({view->lines().begin(), 0}, view->lines().endPlace()); }
    QAccessibleTextInterface *heard() const
    {
        return QAccessible::queryAccessibleInterface(view.get())->textInterface();
    }
    /// What a screen reader says of the looks at a character, after the range that has them.
    QString lookAt(int offset) const;
    /// The middle of the first character of the last such text.
    QPoint placeOf(const QString &sought) const
    {
        return view->rectOf(view->lines().find(sought, view->lines().endPlace(), false).value()).center();
    }
    bool atBottom() const;

    std::unique_ptr<ircview> view;
    QStringList opened;
};

static QImage picture(QWidget &widget)
{
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

void tst_log::init()
{
    QDesktopServices::setUrlHandler(u"http"_s, this, "open");
    opened.clear();
    view = std::make_unique<ircview>(nullptr);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    view->resize(240, 320);
    view->show();
    QVERIFY(QTest::qWaitForWindowExposed(view.get()));
}

QString tst_log::lookAt(int offset) const
{
    int start = 0;
    int end = 0;
    const QString look = heard()->attributes(offset, &start, &end);
    return u"%1-%2 "_s.arg(start).arg(end) + look;
}

bool tst_log::atBottom() const
{
    const QScrollBar &bar = *view->verticalScrollBar();
    const int free = view->viewport()->height() - view->rectOf(view->lines().endPlace()).bottom();
    return bar.value() == bar.maximum() && free > 0 && (free < 10 || bar.maximum() == 0);
}

void tst_log::hostileText_data()
{
    addRows("hostile");
    const auto row = [](const QString &text, const QString &seen) {
        QTest::addRow("%d: %s", static_cast<int>(text.size()), qPrintable(text.left(4))) << text << seen;
    };
    // Each of the first would be searched for its end to the end of the line.
    for (const QString &piece :
         {u"<a"_s, u"&#"_s, u"<"_s, u"\u007f"_s, u"\u0085"_s, u"\u009b"_s, u"\u0300"_s, u"\u0628"_s,
          u"\u1100"_s, u"\u200b"_s, u"\u200d"_s, u"\u200f"_s, u"\u202e"_s, u"\u2066"_s, u"\ufeff"_s}) {
        const QString many = piece.repeated(piece.front() < u'\x7f' ? 200'000 : 2000);
        row(many, many);
        row(many + u" <>", piece == u"<a" ? QString() : many + u" <>");
    }
    for (const int deep : {16, 60, 500})
        row(u"<table><tr><td>"_s.repeated(deep) + u'x', u"x"_s);
    row(u"&lt;"_s.repeated(100'000), u"<"_s.repeated(100'000));
}

// Nothing is opened, and the lines before and after it are as they were.
void tst_log::hostileText()
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
    QTRY_VERIFY(atBottom());
    view->grab();
    // Nobody has the FIFO open; and who had opened it in the usual way would still hang there.
    QCOMPARE(::open(fifo.constData(), O_WRONLY | O_NONBLOCK), -1);
    QCOMPARE(text(), QString(u"- before\n- " + expected + u'\n' + expected + u"\n- after"));
}

void tst_log::looks()
{
    view->privmsg(u"bob"_s, u"\2hi\2 \37u"_s);
    view->message(u"plain"_s);
    QCOMPARE(text(), u"<bob> hi u\n- plain"_s);
    QCOMPARE(lookAt(2), u"1-4 color:rgb(0,0,255);font-weight:normal;"_s);
    QCOMPARE(lookAt(4), u"4-6 color:rgb(0,0,0);font-weight:normal;"_s);
    QCOMPARE(lookAt(7), u"6-8 color:rgb(0,0,0);font-weight:bold;"_s);
    QVERIFY(lookAt(9).contains(u"underline"_s));
    QCOMPARE(lookAt(14), u"12-18 color:rgb(0,0,0);font-weight:normal;"_s);
    // On a dark desktop the blue of a nick is lighter, on the screen as well.
    const QImage light = picture(*view->viewport());
    view->setPalette(QPalette(QColor(0x30, 0x30, 0x30)));
    QVERIFY(!lookAt(2).contains(u"rgb(0,0,255)"_s) && lookAt(2).contains(u",255)"_s));
    QVERIFY(picture(*view->viewport()) != light);
    view->setPalette({});
    QCOMPARE(picture(*view->viewport()), light);
}

// What is not said in markup: backgrounds, styles, and a tint behind what is for us, in every palette.
void tst_log::moreLooks()
{
    const QColor white(Qt::white);
    const QColor black(Qt::black);
    const QColor red(0xc0, 0, 0);
    const auto look = [](quint8 styles, const QColor &text, const QColor &base, QRgb colour,
                         QRgb back) -> QString {
        const QTextCharFormat seen = spanlook({0, 1, colour, back, styles}, text, base);
        return seen.foreground().color().name() + seen.background().color().name() +
               (seen.fontStrikeOut() ? u" struck"_s : QString());
    };
    const QString swapped = red.name() + u"#ffff00";
    QCOMPARE(look(richspan::strike, black, white, red.rgb(), 0), QString(red.name() + u"#000000 struck"));
    QCOMPARE(look(richspan::reverse, white, black, 0, 0), u"#000000#ffffff"_s);
    QCOMPARE(look(richspan::plain, black, white, red.rgb(), 0xffffff00), swapped);
    QVERIFY(look(richspan::reverse, black, white, 0xffffff00, red.rgb()).startsWith(red.name()));
    // On a dark desktop text without a colour of its own is dark on yellow.
    QCOMPARE(look(richspan::plain, white, black, 0, 0xffffff00), u"#000000#ffff00"_s);
    for (const QColor &base : {white, black, QColor(0x30, 0x30, 0x30)}) {
        QPalette palette(base);
        palette.setColor(QPalette::Base, base);
        view->setPalette(palette);
        for (const QColor &highlight : {base, QColor(0x30, 0x8c, 0xc6)}) {
            palette.setColor(QPalette::Highlight, highlight);
            view->setPalette(palette);
            view->addLine(u"plain"_s);
            view->addLine(u"for us"_s, 0, linestore::forUs);
            QTRY_VERIFY(atBottom());
            const auto right = [this](qint64 line) {
                return picture(*view->viewport()).pixelColor(200, view->rectOf({line, 0}).center().y());
            };
            QCOMPARE(right(view->lines().end() - 2), base);
            QVERIFY(right(view->lines().end() - 1) != base);
        }
    }
}

// Whatever comes in a burst, and whenever it is painted, the picture is that of a widget of Qt's with the same text.
void tst_log::looksAsEver()
{
    const QStringList lines{u"a first line"_s,
                            u"<b>bold</b> <u>under</u> <i>italic</i>"_s,
                            u"<font color=\"#de2400\">red</font> and words that wrap, "_s.repeated(4),
                            QString(),
                            u"\u05e9\u05dc\u05d5\u05dd right to left"_s,
                            u"e\u0301 \U0001f600 \u4f60"_s,
                            u"longword"_s.repeated(20)};
    QPlainTextEdit old;
    old.setReadOnly(true);
    for (QAbstractScrollArea *area : std::initializer_list<QAbstractScrollArea *>{&old, view.get()}) {
        area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        area->resize(240, 320);
        area->show();
    }
    QTextCursor pen(old.document());
    for (const QString &line : lines) {
        const richline rich(line);
        view->addLine(line);
        if (!text().isEmpty() && line != lines.first())
            pen.insertBlock();
        pen.insertText(rich.text(), QTextCharFormat());
        for (const richspan &span : rich.spans()) {
            QTextCursor run(pen.block());
            run.setPosition(pen.block().position() + span.start);
            run.setPosition(run.position() + span.length, QTextCursor::KeepAnchor);
            QTextCharFormat look;
            if (span.colour != 0)
                look.setForeground(QColor::fromRgb(span.colour));
            look.setFontWeight((span.styles & richspan::bold) != 0 ? QFont::Bold : QFont::Normal);
            look.setFontUnderline((span.styles & richspan::underline) != 0);
            look.setFontItalic((span.styles & richspan::italic) != 0);
            run.setCharFormat(look);
        }
        pen.movePosition(QTextCursor::End);
        QTRY_COMPARE(picture(*view->viewport()), picture(*old.viewport()));
    }
}

// What is painted line by line, with the pixels moved that stay, is what is painted at once.
void tst_log::scrollsPixels()
{
    view->setTimes(true);
    // What is on the screen, and what would be if all of it were painted now.
    const auto whole = [this] {
        const QRect area = view->viewport()->geometry();
        const QPixmap now =
            view->screen()->grabWindow(view->winId(), area.x(), area.y(), area.width(), area.height());
        return now.toImage().convertToFormat(QImage::Format_RGB32) == picture(*view->viewport());
    };
    for (int i = 0; i < 60; ++i) {
        view->privmsg(u"bob"_s, u"some words "_s.repeated(i * 7 % 12));
        QTRY_VERIFY(whole());
    }
    for (const int by : {-3, -50, 20, -700, 400}) {
        view->scrollBy(by);
        QTRY_VERIFY(whole());
    }
}

void tst_log::staysAtTheBottom()
{
    view->addLine(u"<b>x</b>\r\n\r"_s);
    view->addLine(u"\r\n"_s);
    QCOMPARE(text(), u"x\n"_s);
    for (int i = 0; i < 100; ++i)
        view->addLine(u"some line that is long enough to be wrapped a little, I hope"_s);
    QCOMPARE(view->lines().end(), 102);
    QTRY_VERIFY(atBottom());
    view->verticalScrollBar()->setValue(0);
    QCOMPARE(view->placeAt({0, 0}), logplace());
    view->addLine(u"x"_s.repeated(2000));
    QTRY_VERIFY(atBottom());
    // Lines of all heights, and both sides change: each time all lines are laid out anew.
    for (int i = 0; i < 14; ++i)
        view->addLine(u"word "_s.repeated(i * 7 % 30));
    for (const QSize &size : {QSize(120, 100), QSize(300, 60), QSize(200, 300), QSize(370, 360),
                              QSize(160, 300), QSize(300, 300), QSize(160, 360)}) {
        view->resize(size);
        QTRY_VERIFY(atBottom());
    }
    QVERIFY(!view->horizontalScrollBar()->isVisible());
    QVERIFY(view->selection().isEmpty());
    view->selectAll();
    const QString selected = text();
    view->addLine(u"more"_s);
    QTRY_VERIFY(atBottom());
    QCOMPARE(view->selection().text(), selected);
    view->copy();
    QCOMPARE(QApplication::clipboard()->text(), selected);
    QVERIFY(!QApplication::clipboard()->mimeData()->hasHtml());
}

// A view costs what is seen of it, whatever is above, and however long a word is.
void tst_log::costsWhatIsSeen()
{
    for (int i = 0; i < 100'000; ++i)
        view->privmsg(u"bob"_s, u"\2hello\2 you "_s.repeated(1 + i % 9));
    const auto milliseconds = [](auto work) {
        const std::clock_t start = std::clock();
        work();
        return 1000 * (std::clock() - start) / CLOCKS_PER_SEC;
    };
    const auto seen = [this] {
        view->grab();
        return atBottom();
    };
    QTRY_VERIFY(seen());
    QVERIFY(milliseconds([&] {
                view->resize(300, 320);
                QVERIFY(seen());
            }) < 50);
    for (const int size : {64 * 1024, 500}) {
        const QString word = u"x"_s.repeated(size);
        QVERIFY(milliseconds([&] {
                    view->addLine(word + u" y");
                    view->scrollToBottom();
                    QVERIFY(seen());
                }) < 100);
        QCOMPARE(view->lines().text(view->lines().end() - 1), QString(word + u" y"));
    }
}

void tst_log::mouseAndFinger()
{
    for (int i = 0; i < 100; ++i)
        view->message(QString::number(i));
    const QString address = u"http://a.example/" + u"x"_s.repeated(300);
    view->message(address + u" and words");
    QTRY_VERIFY(atBottom());
    QWidget *seen = view->viewport();
    const QClipboard *copied = QApplication::clipboard();
    QTest::mouseMove(seen, placeOf(u"and"_s));
    QCOMPARE(seen->cursor().shape(), Qt::IBeamCursor);
    QTest::mouseMove(seen, placeOf(u"ttp:"_s));
    QCOMPARE(seen->cursor().shape(), Qt::PointingHandCursor);
    QTest::mouseClick(seen, Qt::LeftButton, {}, placeOf(u"words"_s));
    QTest::mouseClick(seen, Qt::RightButton, {}, placeOf(u"ttp:"_s));
    QVERIFY(opened.isEmpty());
    QTest::mouseClick(seen, Qt::LeftButton, {}, placeOf(u"ttp:"_s));
    QCOMPARE(opened, QStringList(address));
    // A line that comes between press and release opens nothing else, and Ctrl+Shift begins no drag.
    QTest::mousePress(seen, Qt::LeftButton, {}, placeOf(u"ttp:"_s));
    const QPoint pressed = placeOf(u"ttp:"_s);
    view->message(u"http://b.example/ "_s.repeated(40));
    QTRY_VERIFY(atBottom());
    QTest::mouseRelease(seen, Qt::LeftButton, {}, pressed);
    QCOMPARE(opened.size(), 1);

    // Two clicks take a word, three a line, Shift all up to there, and a drag what it passes, beyond the edges too.
    view->message(u"some words, the last"_s);
    QTRY_VERIFY(atBottom());
    const QPoint word = placeOf(u"words,"_s);
    QTest::mouseDClick(seen, Qt::LeftButton, {}, word);
    QTest::mouseRelease(seen, Qt::LeftButton, {}, word);
    QCOMPARE(copied->text(), u"words"_s);
    QTest::mouseClick(seen, Qt::LeftButton, {}, word);
    QCOMPARE(copied->text(), u"- some words, the last"_s);
    QTest::mouseClick(seen, Qt::LeftButton, {}, placeOf(u"- some"_s) - QPoint(4, 0));
    QVERIFY(view->selection().isEmpty());
    QTest::mouseClick(seen, Qt::LeftButton, Qt::ShiftModifier, placeOf(u", the"_s) - QPoint(1, 0));
    QCOMPARE(copied->text(), u"- some words"_s);
    QTest::mousePress(seen, Qt::LeftButton, Qt::ControlModifier | Qt::ShiftModifier, word);
    QTest::mouseMove(seen, QPoint(0, -60));
    QTRY_VERIFY(view->selection().start().line < 50);
    QTest::mouseRelease(seen, Qt::LeftButton, {}, QPoint(0, -60));
    QCOMPARE(copied->text(), view->selection().text());
    view->scrollToBottom();

    // A tap opens as well; a finger that moves scrolls and selects nothing.
    view->message(address);
    QTRY_VERIFY(atBottom());
    QTest::mouseClick(seen, Qt::LeftButton, {}, QPoint(200, 10));
    const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
    const QPoint tapped = placeOf(u"ttp:"_s);
    QTest::touchEvent(seen, screen.get()).press(0, tapped);
    QTest::touchEvent(seen, screen.get()).release(0, tapped);
    QCOMPARE(opened.size(), 2);
    const int before = view->verticalScrollBar()->value();
    QTest::touchEvent(seen, screen.get()).press(0, QPoint(50, 50));
    for (int y = 60; y <= 250; y += 10)
        QTest::touchEvent(seen, screen.get()).move(0, QPoint(50, y));
    QTest::touchEvent(seen, screen.get()).release(0, QPoint(50, 250));
    QTRY_VERIFY(view->verticalScrollBar()->value() < before - 100);
    QVERIFY(view->selection().isEmpty());
    QCOMPARE(opened.size(), 2);
}

// What looks like a link is what a click opens; the keyboard, a menu and a long press reach it, and nothing opens by itself.
void tst_log::links()
{
    const manners today = manners::today();
    const QString text = u"see (http://a.example/), http://b.example/?%20"_s;
    const auto letter = [this](const QString &at) {
        return view->viewport()->grab(view->rectOf(view->lines().find(at, {0, 0}, true).value())).toImage();
    };
    view->notice(u"x"_s, text);
    const QImage plain = picture(*view->viewport());
    const QImage inLink = letter(u"/),"_s);
    const QImage behind = letter(u", h"_s);
    view->setShowsLinks(true);
    QVERIFY(letter(u"/),"_s) != inLink && letter(u", h"_s) == behind);
    view->setShowsLinks(false);
    QCOMPARE(picture(*view->viewport()), plain);

    view->manner = &today;
    for (int i = 0; i < 60; ++i)
        view->message(u"http://far.example"_s);
    view->message(u"ftp://no.example http:// "_s.repeated(60));
    view->message(text + u" https://\u202ec.example");
    QTRY_VERIFY(atBottom());
    auto *walk = new linkwalk(view.get());
    QStringList walked;
    for (const bool newer : {false, false, false, true, true}) {
        walk->step(newer);
        walked += view->selection().text();
    }
    const QString a = u"http://a.example/"_s;
    const QString b = u"http://b.example/?%20"_s;
    QCOMPARE(walked, QStringList({b, a, b, a, b}));
    QCOMPARE(QApplication::focusWidget(), view.get());
    view->message(u"more"_s);
    QTest::keyClick(view.get(), Qt::Key_Up);
    QVERIFY(opened.isEmpty());
    QTest::keyClick(view.get(), Qt::Key_Return);
    QTest::keyClick(view.get(), Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(opened, QStringList({a, a}));
    QTest::keyClick(view.get(), Qt::Key_Escape);
    QVERIFY(view->selection().isEmpty());
    QVERIFY(view->findText(b, false));
    QTest::keyClick(view.get(), Qt::Key_Return);
    QCOMPARE(opened.size(), 2);

    walk->step();
    // The menu of the right button, of the menu key, and of a finger that stays.
    const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
    QWidget *seen = view->viewport();
    for (QWidget *asked : {seen, static_cast<QWidget *>(view.get()), static_cast<QWidget *>(nullptr)}) {
        const bool touch = asked == nullptr;
        const QPoint point = placeOf(u"ttp://b."_s);
        if (touch) {
            QTest::touchEvent(seen, screen.get()).press(0, point);
        } else {
            QContextMenuEvent menu(QContextMenuEvent::Keyboard, point, seen->mapToGlobal(point));
            QApplication::sendEvent(asked, &menu);
        }
        QTRY_VERIFY(QApplication::activePopupWidget() != nullptr);
        if (touch)
            QTest::touchEvent(seen, screen.get()).release(0, point);
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QCOMPARE(menu->actions().value(0)->text(), u"&Open"_s);
        menu->actions().at(touch ? 1 : 0)->trigger();
        menu->close();
        QCOMPARE(opened.mid(2), QStringList(asked == seen ? 1 : 2, b));
    }
    QCOMPARE(QApplication::clipboard()->text(), b);
}

// Neither changes what is read, and what is past is no news.
void tst_log::pastAndForUs()
{
    const QDateTime noon(QDate(2026, 11, 22), QTime(12, 0));
    view->showPast({{noon.toSecsSinceEpoch(), u"<bob> <b>&lt; \2hi"_s},
                    {noon.addSecs(60).toSecsSinceEpoch(), u"- \n"_s},
                    {noon.addDays(1).toSecsSinceEpoch(), u"x"_s}});
    QCOMPARE(text(), u"2026-11-22\n[12:00] <bob> <b>&lt; hi\n[12:01] -  \n2026-11-23\n[12:00] x"_s);
    const auto inked = [this](qint64 line) {
        const QRect row(0, view->rectOf({line, 0}).top(), 200, view->rectOf({line, 0}).height());
        const QImage seen = view->viewport()->grab(row).toImage();
        int darkest = 255;
        for (int i = 0; i < seen.width() * seen.height(); ++i)
            darkest = std::min(darkest, qGray(seen.pixel(i % seen.width(), i / seen.width())));
        return darkest;
    };
    for (const bool times : {false, true}) {
        view->setTimes(times);
        QVERIFY(inked(1) > 100 && inked(1) < 200);
    }
    view->setTimes(false);
    for (const QString &nick : {u"bob"_s, u"<b"_s, u"&lt"_s}) {
        const qint64 next = view->lines().end();
        for (const bool forUs : {false, true}) {
            for (const auto show : {&ircview::privmsg, &ircview::action, &ircview::notice}) {
                if (forUs)
                    view->markNext();
                (view.get()->*show)(nick, u"ada: lt; hello"_s);
            }
        }
        for (qint64 line = next; line < next + 3; ++line) {
            QCOMPARE(view->lines().text(line + 3), view->lines().text(line));
            QVERIFY(view->lines().has(line + 3, linestore::forUs) &&
                    !view->lines().has(line, linestore::forUs));
        }
        const auto bold = [this](qint64 line) {
            const auto spans = view->lines().spans(line);
            return std::any_of(spans.begin(), spans.end(), [](const richspan &s) {
                return s.start < 3 && (s.styles & richspan::bold) != 0;
            });
        };
        QCOMPARE(bold(next + 3) && bold(next + 4) && bold(next + 5), nick == u"bob");
    }
    view->grab();
    QVERIFY(inked(1) > 100 && inked(view->lines().end() - 1) < 60);
}

// What a screen reader gets is the text, piece by piece, as it is on the screen.
void tst_log::isHeard()
{
    for (const char *line : {"one two", "", "three four. Five"})
        view->addLine(QString::fromLatin1(line));
    QTRY_COMPARE(view->verticalScrollBar()->maximum(), 0);
    QAccessibleTextInterface *reader = heard();
    QVERIFY(QAccessible::queryAccessibleInterface(view.get())->state().readOnly);
    QCOMPARE(reader->text(0, reader->characterCount()), text());
    int start = 0;
    int end = 0;
    QCOMPARE(reader->textAtOffset(5, QAccessible::WordBoundary, &start, &end), u"two"_s);
    QCOMPARE(reader->textAtOffset(10, QAccessible::LineBoundary, &start, &end), u"three four. Five"_s);
    QCOMPARE(std::pair(start, end), std::pair(9, 25));
    QCOMPARE(reader->textBeforeOffset(9, QAccessible::ParagraphBoundary, &start, &end).trimmed(), QString());
    QCOMPARE(reader->textAtOffset(reader->characterCount(), QAccessible::CharBoundary, &start, &end),
             QString());
    for (const int offset : {0, 6, 8, 9, 24})
        QCOMPARE(reader->offsetAtPoint(reader->characterRect(offset).topLeft()), offset);
    reader->setSelection(0, 4, 12);
    QCOMPARE(view->selection().text(), u"two\n\nthr"_s);
    reader->selection(0, &start, &end);
    QCOMPARE(std::pair(start, end), std::pair(4, 12));
    reader->removeSelection(0);
    QCOMPARE(reader->selectionCount(), 0);
}

// Midnight and a tab change lie between these lines.
void tst_log::timesAndMarks()
{
    const QDateTime evening(QDate(2026, 11, 22), QTime(23, 59));
    view->addLine(u"one"_s, evening.toSecsSinceEpoch());
    view->addLine(u"two"_s, evening.addSecs(120).toSecsSinceEpoch());
    view->hide();
    view->addLine(u"three"_s, evening.addSecs(180).toSecsSinceEpoch());
    view->show();
    const auto coloured = [this](qint64 line) {
        return picture(*view->viewport()).pixelColor(100, view->rectOf({line, 0}).top()) ==
               view->palette().color(QPalette::Highlight);
    };
    const int row = placeOf(u"two"_s).y() - placeOf(u"one"_s).y();
    QVERIFY(coloured(2) && !coloured(1));
    view->setTimes(true);
    QCOMPARE(placeOf(u"two"_s).y() - placeOf(u"one"_s).y(), 2 * row);
    QCOMPARE(placeOf(u"three"_s).y() - placeOf(u"two"_s).y(), row);
    QVERIFY(placeOf(u"one"_s).x() > 30);
    QCOMPARE(text(), u"one\ntwo\nthree"_s);
    view->hide();
    view->show();
    QVERIFY(!coloured(2));
    view->addLine(u"four"_s, evening.addSecs(180).toSecsSinceEpoch());
    QVERIFY(!coloured(3));
}

void tst_log::keepsPlaceAndFewLines()
{
    const auto add = [this](int lines) {
        for (int i = 0; i < lines; ++i)
            view->addLine(u"line %1 "_s.arg(view->lines().end()).repeated(1 + i % 9));
        view->grab();
    };
    add(600);
    QTRY_VERIFY(atBottom());
    view->setKeepsPlace(true);
    view->scrollBy(-500);
    const logplace first = view->placeAt({0, 0});
    auto *button = view->findChild<QToolButton *>();
    add(12);
    QTRY_COMPARE(button->text(), u"\u2193 12 new"_s);
    QCOMPARE(view->placeAt({0, 0}), first);
    QVERIFY(button->isVisible());
    view->hide();
    view->show();
    view->showNewest();
    QCOMPARE(view->placeAt({0, 0}), first);
    button->click();
    QVERIFY(atBottom() && !button->isVisible());
    add(5);
    QTRY_VERIFY(atBottom());
    // What is selected goes with the lines that go.
    view->selectAll();
    view->setScrollback(300);
    QCOMPARE(view->lines().end() - view->lines().begin(), 300);
    QCOMPARE(view->lines().text(view->selection().start().line), view->lines().text(view->lines().begin()));
    QCOMPARE(heard()->text(0, heard()->characterCount()), text());
    view->verticalScrollBar()->setValue(0);
    add(10);
    QTRY_COMPARE(button->text(), u"\u2193 10 new"_s);
    QCOMPARE(view->placeAt({0, 0}), (logplace{view->lines().begin(), 0}));
    view->findText(view->lines().text(view->lines().begin() + 1), false);
    view->grab();
}

// Case does not count, the search goes round at both ends, and what is not found moves nothing.
void tst_log::finds()
{
    for (int i = 0; i < 100; ++i)
        view->addLine(u"%1 lines"_s.arg(i));
    QStringList found;
    for (const bool newer : {false, false, false, false, true, true, true}) {
        QVERIFY(view->findText(u"7 LINES"_s, newer));
        found.append(view->selectedLine().section(u' ', 0, 0));
    }
    QCOMPARE(found.join(u' '), u"97 87 77 67 77 87 97"_s);
    QVERIFY(view->findText(u"7 LINES"_s, true));
    QCOMPARE(view->selectedLine(), u"7 lines"_s);
    // Case is that of Unicode, in lines of bytes and in others.
    const auto pairs =
        u"\u00c4\u00d8 \u00fc|\u00e4\u00f8 \u00dc|k\u00b5|\u212a\u03bc|\u00ff\u00df \u0101|\u0178\u00df \u0100"_s
            .split(u'|');
    for (qsizetype i = 0; i < pairs.size(); ++i) {
        view->addLine(pairs[i]);
        QVERIFY(view->findText(pairs[i ^ 1], false));
        QCOMPARE(view->selectedLine(), pairs[i]);
        view->select(view->lines().endPlace(), view->lines().endPlace());
    }
    QVERIFY(view->findText(u"7 LINES"_s, true) && view->selectedLine() == u"7 lines"_s);
    view->verticalScrollBar()->setValue(7);
    for (const bool newer : {false, true})
        QVERIFY(!view->findText(u"x"_s, newer));
    QCOMPARE(view->verticalScrollBar()->value(), 7);
    QCOMPARE(view->selection().text(), u"7 lines"_s);
}

QTEST_MAIN(tst_log)
#include "tst_log.moc"
