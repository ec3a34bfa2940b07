// SPDX-License-Identifier: MIT
//
// The message view: control codes, what becomes of markup, and what is on the screen.

#include "ircview.h"
#include "richline.h"
#include "rows.h"
#include "weblink.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QMimeData>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>

#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

class tst_view : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void controlCodes_data();
    void controlCodes();
    void markup_data();
    void markup();
    void manyOpenings();
    void looks();
    void firstLinesAreDressed();
    void textIsThereAtOnce();
    void staysAtTheBottom();
    void laysOutOnlyWhatIsSeen();
    void addresses_data();
    void addresses();
    void mouseAndFinger();
    void finds();
    void readableEverywhere();
    void hostileText_data();
    void hostileText();

private Q_SLOTS:
    // What the view opens comes here instead of into a browser.
    void open(const QUrl &url) { opened.append(url.toString()); }

private:
    QStringList opened;
};

void tst_view::controlCodes_data()
{
    addRows("control-codes");
}

void tst_view::controlCodes()
{
    QFETCH(const QString, input);
    QTEST(ircview::ircToHtml(input), "expected");
}

void tst_view::markup_data()
{
    addRows("markup");
}

void tst_view::markup()
{
    QFETCH(const QString, input);
    const richline line(input);
    QString seen = line.text();
    for (const richspan &span : line.spans())
        seen += u" %1+%2:%3/%4"_s.arg(span.start)
                    .arg(span.length)
                    .arg(span.colour & 0xffffff, 6, 16, QChar(u'0'))
                    .arg(span.styles);
    QTEST(seen, "expected");
}

// Each of these would be searched for its end to the end of the line.
void tst_view::manyOpenings()
{
    for (const QString &piece : {u"<a"_s, u"&#"_s, u"<"_s}) {
        for (const QString &end : {QString(), u" <>"_s}) {
            const QString line = piece.repeated(200'000) + end;
            QCOMPARE(QString(richline(line).text()).remove(richline::breakHere),
                     piece == u"<a" && !end.isEmpty() ? QString() : line);
        }
    }
}

static QList<QTextLayout::FormatRange> formatsOf(const ircview &view, int line)
{
    return view.document()->findBlockByNumber(line).layout()->formats();
}

void tst_view::looks()
{
    ircview view(nullptr);
    view.resize(240, 320);
    view.show();
    view.privmsg(u"bob"_s, u"\2hi\2 \37u"_s);
    view.message(u"plain"_s);
    // Where the user's own cursor stands makes no difference to what comes next.
    QTRY_COMPARE(formatsOf(view, 0).size(), 3);
    view.moveCursor(QTextCursor::Start);
    view.moveCursor(QTextCursor::Right);
    view.nick(u"a"_s, u"b"_s);
    QTRY_VERIFY(view.document()->findBlockByNumber(2).layout()->lineCount() > 0);
    QCOMPARE(view.toPlainText(), u"<bob> hi u\n- plain\na is now known as b"_s);
    const auto runs = formatsOf(view, 0);
    QCOMPARE(runs[0].format.foreground().color(), QColor(0, 0, 255));
    QCOMPARE(runs[0].start, 1);
    QCOMPARE(runs[0].length, 3);
    QCOMPARE(runs[1].format.fontWeight(), static_cast<int>(QFont::Bold));
    QVERIFY(runs[2].format.fontUnderline());
    QCOMPARE(formatsOf(view, 1).value(0).format.foreground().color(), QColor(0xdd, 0x88, 0x88));
    QCOMPARE(formatsOf(view, 2).size(), 0);
    const QImage picture = view.grab().toImage();
    bool blue = false;
    for (int x = 0; x < picture.width(); ++x) {
        for (int y = 0; y < 20; ++y)
            blue |= picture.pixelColor(x, y) == QColor(0, 0, 255);
    }
    QVERIFY(blue);
}

void tst_view::firstLinesAreDressed()
{
    ircview view(nullptr);
    view.show();
    QTRY_VERIFY(view.document()->firstBlock().layout()->lineCount() > 0);
    view.addLine(u"<b>x</b>\r\n\r"_s);
    // Painting in the middle of an edit loses nothing of it.
    view.grab();
    view.addLine(u"<b>z</b>"_s);
    view.addLine(u"z"_s);
    QTRY_COMPARE(formatsOf(view, 1).size(), 1);
    for (int line = 0; line < 3; ++line)
        QCOMPARE(view.document()->findBlockByNumber(line).layout()->lineAt(0).textLength(), 1);
    QCOMPARE(formatsOf(view, 0).size(), 1);
    view.addLine(u"\r\n"_s);
    view.addLine(u"y"_s);
    QCOMPARE(view.toPlainText(), u"x\nz\nz\n\ny"_s);
}

void tst_view::textIsThereAtOnce()
{
    ircview view(nullptr);
    QString expected;
    for (int i = 0; i < 100; ++i) {
        view.addLine(QString::number(i));
        expected += (i == 0 ? QString() : u"\n"_s) + QString::number(i);
        QCOMPARE(view.toPlainText(), expected);
    }
}

void tst_view::staysAtTheBottom()
{
    ircview view(nullptr);
    view.resize(200, 100);
    view.show();
    const QScrollBar &bar = *view.verticalScrollBar();
    const auto atBottom = [&] {
        QTextCursor end(view.document());
        end.movePosition(QTextCursor::End);
        const QRect last = view.cursorRect(end);
        return bar.value() == bar.maximum() && view.viewport()->rect().contains(last.center());
    };
    for (int i = 0; i < 100; ++i)
        view.addLine(u"some line that is long enough to be wrapped a little, I hope"_s);
    QTRY_VERIFY(bar.maximum() > 0 && atBottom());
    view.verticalScrollBar()->setValue(0);
    view.addLine(u"x"_s.repeated(2000));
    QTRY_VERIFY(atBottom());
    for (const QSize &size : {QSize(120, 100), QSize(300, 60), QSize(200, 300)}) {
        view.resize(size);
        QTRY_VERIFY(atBottom());
    }
    QVERIFY(!view.horizontalScrollBar()->isVisible());
    // Lines of all heights, and both sides change: the bottom is found even though every line is laid out
    // anew.
    for (int i = 0; i < 14; ++i)
        view.addLine(u"word "_s.repeated(i * 7 % 30));
    for (const QSize &size : {QSize(370, 360), QSize(160, 300), QSize(300, 300), QSize(160, 360)}) {
        view.resize(size);
        QTRY_VERIFY(atBottom());
    }
    QVERIFY(!view.textCursor().hasSelection());
    view.selectAll();
    const QString selected = view.textCursor().selectedText();
    view.addLine(u"more"_s);
    QTRY_COMPARE(view.textCursor().selectedText(), selected);
    view.copy();
    QCOMPARE(QApplication::clipboard()->text(), view.toPlainText().remove(richline::breakHere).chopped(5));
    QVERIFY(!QApplication::clipboard()->mimeData()->hasHtml());
    QTRY_VERIFY(atBottom());
}

void tst_view::laysOutOnlyWhatIsSeen()
{
    ircview view(nullptr);
    view.resize(240, 320);
    view.show();
    for (int i = 0; i < 2000; ++i)
        view.privmsg(u"bob"_s, u"\2hello"_s);
    QTRY_VERIFY(view.document()->lastBlock().layout()->lineCount() > 0);
    view.addLine(u"one more"_s);
    QTRY_VERIFY(view.document()->lastBlock().layout()->lineCount() > 0);
    int laidOut = 0;
    for (QTextBlock block = view.document()->begin(); block.isValid(); block = block.next())
        laidOut += block.layout()->lineCount() > 0 ? 1 : 0;
    QVERIFY2(laidOut < 200, qPrintable(QString::number(laidOut)));
}

void tst_view::addresses_data()
{
    addRows("addresses");
}

void tst_view::addresses()
{
    QFETCH(QString, input);
    const qsizetype place = input.indexOf(u'|');
    QTEST(weblink(input.remove(place, 1), place).toString(), "expected");
}

void tst_view::mouseAndFinger()
{
    QDesktopServices::setUrlHandler(u"http"_s, this, "open");
    ircview view(nullptr);
    view.resize(240, 320);
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    view.show();
    for (int i = 0; i < 100; ++i)
        view.message(QString::number(i));
    const QString longWord = u"x"_s.repeated(300);
    view.message(u"http://a.example/" + longWord + u" and words");
    QTRY_VERIFY(view.document()->lastBlock().layout()->lineCount() > 0);
    const auto placeOf = [&view](const QString &text) {
        QTextCursor there =
            view.document()->find(text, view.document()->characterCount(), QTextDocument::FindBackward);
        there.setPosition(there.selectionStart() + 1);
        return view.cursorRect(there).center();
    };
    QWidget *seen = view.viewport();
    QTest::mouseMove(seen, placeOf(u"and"_s));
    QCOMPARE(seen->cursor().shape(), Qt::IBeamCursor);
    QTest::mouseMove(seen, placeOf(u"ttp:"_s));
    QCOMPARE(seen->cursor().shape(), Qt::PointingHandCursor);
    QTest::mouseClick(seen, Qt::LeftButton, {}, placeOf(u"words"_s));
    QTest::mouseClick(seen, Qt::RightButton, {}, placeOf(u"ttp:"_s));
    QVERIFY(opened.isEmpty());
    QTest::mouseClick(seen, Qt::LeftButton, {}, placeOf(u"ttp:"_s));
    QCOMPARE(opened, QStringList(u"http://a.example/" + longWord));
    QTest::mouseDClick(seen, Qt::LeftButton, {}, placeOf(u"words"_s));
    QTest::mouseRelease(seen, Qt::LeftButton, {}, placeOf(u"words"_s));
    QCOMPARE(QApplication::clipboard()->text(), u"words"_s);

    // A tap opens as well; a finger that moves scrolls and selects nothing.
    const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
    view.moveCursor(QTextCursor::Start);
    view.scrollToBottom();
    const QPoint tapped = placeOf(u"ttp:"_s);
    QTest::touchEvent(seen, screen.get()).press(0, tapped);
    QTest::touchEvent(seen, screen.get()).release(0, tapped);
    QCOMPARE(opened.size(), 2);
    const int before = view.verticalScrollBar()->value();
    QTest::touchEvent(seen, screen.get()).press(0, QPoint(50, 50));
    for (int y = 60; y <= 250; y += 10)
        QTest::touchEvent(seen, screen.get()).move(0, QPoint(50, y));
    QTest::touchEvent(seen, screen.get()).release(0, QPoint(50, 250));
    QTRY_VERIFY(view.verticalScrollBar()->value() < before - 5);
    QVERIFY(!view.textCursor().hasSelection());
    QCOMPARE(opened.size(), 2);
    QDesktopServices::unsetUrlHandler(u"http"_s);
}

void tst_view::finds()
{
    ircview view(nullptr);
    for (const char *line : {"apple one", "pear", "Apple two", "apple three"})
        view.addLine(QString::fromLatin1(line));
    QStringList found;
    for (const bool newer : {false, false, false, false, true, true}) {
        QVERIFY(view.findText(u"APPLE"_s, newer));
        found.append(view.textCursor().block().text().section(u' ', 1));
    }
    QCOMPARE(found.join(u' '), u"three two one three one two"_s);
    QVERIFY(!view.findText(u"plum"_s, false));
    QCOMPARE(view.textCursor().selectedText(), u"Apple"_s);
}

void tst_view::readableEverywhere()
{
    QPalette dark;
    dark.setColor(QPalette::Base, QColor(0x20, 0x20, 0x20));
    dark.setColor(QPalette::Text, Qt::white);
    ircview view(nullptr);
    view.show();
    view.privmsg(u"bob"_s, u"\0034,1red"_s);
    const auto colour = [&view](int run) {
        return formatsOf(view, 0).value(run).format.foreground().color();
    };
    QTRY_COMPARE(colour(0), QColor(0, 0, 255));
    QCOMPARE(colour(1), QColor(0xde, 0x24, 0));
    view.setPalette(dark);
    QTRY_VERIFY(colour(0).lightness() > 150);
    QVERIFY(colour(0).blue() > colour(0).red());
    view.setPalette({});
    QTRY_COMPARE(colour(0), QColor(0, 0, 255));
}

void tst_view::hostileText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("seen");
    const auto row = [](const char *name, const QString &text, const QString &seen) {
        QTest::newRow(name) << text << seen;
    };
    const auto tables = [](int deep) { return u"<table><tr><td>"_s.repeated(deep); };
    for (const char *source : {"file:/dev/zero", "file:$FIFO", "$FIFO", "http://127.0.0.1:1/x.png",
                               "data:image/png;base64,iVBORw0KGgo=", ":/Parlo.png"}) {
        row(source, u"a<img src=\"%1\">b<body background='%1'>c"_s.arg(QLatin1StringView(source)), u"abc"_s);
    }
    for (const int deep : {16, 60, 500})
        row(qPrintable(u"%1 tables"_s.arg(deep)), tables(deep) + u'x', u"x"_s);
    row("overlapping", u"<b>a<i>b</b>c</i>d<u>"_s, u"abcd"_s);
    row("blocks", u"<style>*{}</style><a href=x>y</a><hr><ul><li>z<p>p<br>q<pre>r"_s, u"*{}yzpqr"_s);
    row("entities", u"&lt;"_s.repeated(100'000), u"<"_s.repeated(100'000));
    for (const char16_t c : std::u16string_view(u"\u202e\u200f\u2066\u200b\u200d\u0300\ufeff\u1100\u0628"))
        row(qPrintable(u"U+%1"_s.arg(c, 4, 16)), QString(QChar(c)).repeated(2000),
            c == richline::breakHere ? QString() : QString(QChar(c)).repeated(2000));
    QString all;
    QString seen;
    for (char16_t c = 1; c < 0xa0; ++c) {
        all += c == u'<' || c == u'&' ? u'.' : QChar(c);
        seen += c == u'\t' || c == u'\n' || c == u'\r' ? u' ' : all.back();
    }
    row("all control characters", all, seen);
}

// Nothing is opened, and the lines before and after it are as they were.
void tst_view::hostileText()
{
    QFETCH(QString, text);
    QFETCH(const QString, seen);
    const QTemporaryDir folder;
    const QByteArray fifo = QFile::encodeName(folder.filePath(u"fifo"_s));
    QCOMPARE(mkfifo(fifo.constData(), 0600), 0);
    text.replace(u"$FIFO"_s, QFile::decodeName(fifo));
    ircview view(nullptr);
    view.resize(240, 320);
    view.show();
    view.message(u"<b>before</b>"_s);
    view.message(text);
    view.addLine(text);
    view.message(u"after"_s);
    QTRY_VERIFY(view.document()->lastBlock().layout()->lineCount() > 0);
    view.grab();
    // Nobody has the FIFO open; and who had opened it in the usual way would still hang there.
    QCOMPARE(::open(fifo.constData(), O_WRONLY | O_NONBLOCK), -1);
    const QString shown = view.toPlainText().remove(richline::breakHere);
    QCOMPARE(shown, QString(u"- before\n- " + seen + u'\n' + seen + u"\n- after"));
    for (QTextBlock block = view.document()->begin(); block.isValid(); block = block.next())
        QVERIFY(!block.textList() && block.blockFormat().propertyCount() == 0);
}

QTEST_MAIN(tst_view)
#include "tst_view.moc"
