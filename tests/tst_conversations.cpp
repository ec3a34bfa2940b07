// SPDX-License-Identifier: MIT
//
// Plays the conversations in tests/conversations: the whole program between a scripted server and a scripted
// user. A script is read from top to bottom:
//
//   connect NICK CHANNELS     the user opens Parlo and connects; "-" joins nothing
//   preset KEY VALUE          in the next preset by address this key has this value
//   address NICK ADDRESS      the user opens Parlo and connects to an address: lines are UTF-8 from now on
//   answer TEXT               the user types a text into the prompt that opens, or closes it if there is none
//   welcome back              the server waits for a new connection
//   <- LINE                   the server sends this line
//   <~ TEXT                   the server sends this, without a line end
//   -> LINE                   Parlo must have sent this line next
//   refuse                    nobody listens at the server's port
//   listen                    the server listens again
//   pass SECONDS              so much time passes for the link
//   deaf                      the server reads nothing from now on
//   close                     the server sends all its pending lines and closes the connection
//   gone                      the server sees the connection end
//   (TAB) TEXT                the user types a text into a tab and presses Return
//   [TAB] LINE                the tab must show this line next
//   matches TAB PATTERN       the next line of the tab must match this regular expression
//   {TAB} MEMBERS             its member list must be this
//   sees TAB TEXT             a line of the tab must contain this; the lines before it do not count
//   tabs NAMES                the tabs must be these, from left to right, separated by " | "
//   front TAB                 this tab must be in front
//   select TAB                the user clicks a tab
//   click TAB WHAT            the user clicks a member, or the button that reads WHAT
//   edit TAB TEXT             the user types a text and does not press Return
//   paste TAB A|B|C           the user pastes these lines into a tab, and agrees to send them
//   press TAB KEYS            the user presses keys in the tab's input line: "Tab Shift+Tab"
//   keys KEYS                 the user presses keys where the focus is
//   hears TEXT                a screen reader must get this for what has the focus
//   input TAB TEXT            the input line must contain this
//   state TAB TEXT            the empty input line must say this of the connection
//   selected TAB LINE/TEXT    in this line of the tab, this text must be selected
//   news TAB WORDS            the tab's label must show this activity: "", "something happened",
//                             "new messages", "for you"
//   click TAB WHAT            the user clicks a member, or the button that reads WHAT
//   choose TAB NICK           the user double-clicks a member
//   menu TAB NICK ENTRIES     the menu of a member must have these entries, separated by " | "; it closes
//   pick TAB NICK ENTRY       the user chooses an entry of the menu of a member
//   prefers KEY VALUE         in the settings of the chat this key has this value
//   desktop CAN               there is a desktop with notifications, which can do this
//   notified TITLE|BODY|ID    it must be asked next for this, in place of the notification with this id
//   answers SIGNAL ID TEXT    it says this
//   file NAME TEXT            a file of the user's must contain this text by now
//   nowhere NAME TEXT         it must not
//   button TAB WORDS          a screen reader must get this for the button in the tab's corner
//   resize WIDTHxHEIGHT       the user makes the window this size
//   looks TAB SIZE FONT LIST  the window must have this size, the tab's text must be this many points larger
//                             than usual ("+2"), and the members must be "shown" or "hidden"
//   picture NAME-WIDTHxHEIGHT the window, at this size, is saved as a picture
//   warns TEXT                Parlo must write this warning to stderr before the script ends
//   repeat COUNT STEP         repeats a step; $N in it is the number, from 0
//   ngircd start              a real server replaces the scripted one: of the steps above "(TAB)", only
//                             "connect" works with it
//   ngircd stop               the real server ends
//   guest LINE                the other client of the real server sends this line
//   heard TEXT                the other client must have been sent this by now
//
// "TAB/2" is the second tab of a name, $PORT the server's port, $PAST a moment two minutes
// ago. See rows.h for control characters and long
// texts. Lines that begin with ";" are comments. The test fails if Parlo sent, showed or warned of anything
// that the script did not ask for.

#include "config.h"
#include "countdown.h"
#include "fakedaemon.h"
#include "linecodec.h"
#include "parlo.h"
#include "rows.h"
#include "user.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QDateTime>
#include <QDir>
#include <QInputDialog>
#include <QMessageBox>
#include <QProcess>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

class tst_conversations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void play_data();
    void play();

private:
    struct verb;
    static const verb verbs[];

    void step(const QString &line);
    void startServer();
    void stopServer();

    std::unique_ptr<user> person;
    std::unique_ptr<QTcpServer> server;
    quint16 port = 0;
    QMap<QString, QString> preset;
    linecodec codec = linecodec::latin1;
    QTcpSocket *client = nullptr;
    QProcess ngircd;
    QTcpSocket guest;
    QByteArray told;
    std::unique_ptr<fakebus> bus;
    std::unique_ptr<fakedaemon> desktop;
    QStringList asked;
};

void tst_conversations::init()
{
    countdown::hold();
    // Noon, so that what was two minutes ago was today.
    static const int zone = QDateTime::currentDateTimeUtc().time().hour() - 12;
    qputenv("TZ", "Test" + QByteArray::number(zone));
    QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support )"_s));
    // The last user's window saves its size when it is deleted.
    person.reset();
    desktop.reset();
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    asked.clear();
    person = std::make_unique<user>();
    server = std::make_unique<QTcpServer>();
    QVERIFY(server->listen(QHostAddress::LocalHost));
    port = server->serverPort();
    preset.clear();
    client = nullptr;
}

void tst_conversations::startServer()
{
    server->close();
    ngircd.start(u"/usr/sbin/ngircd"_s, {u"-n"_s, u"-f"_s, u"/dev/stdin"_s});
    ngircd.write(
        "[Global]\nName = irc.test\nInfo = test\nListen = 127.0.0.1\nMotdPhrase = Good day\nPorts = " +
        QByteArray::number(port) +
        "\n[Options]\nDNS = no\nIdent = no\nPAM = no\n[Limits]\nMaxPenaltyTime = 0\n");
    ngircd.closeWriteChannel();
    QByteArray log;
    QTRY_VERIFY2((log += ngircd.readAll()).contains("listening"), log.constData());
}

void tst_conversations::stopServer()
{
    ngircd.terminate();
    QVERIFY(ngircd.waitForFinished());
}

/// The part of a line after its first word: all of it, and its own first word and the rest.
struct phrase
{
    QString all;
    QString first;
    QString rest;
};

struct tst_conversations::verb
{
    QLatin1StringView word;
    void (*act)(tst_conversations &t, const phrase &p) = nullptr;
};

// As in the head of this file, in the same order.
const tst_conversations::verb tst_conversations::verbs[] = {
    {"connect"_L1,
     [](auto &t, auto &p) {
         t.codec = linecodec::latin1;
         t.person->connectTo(t.port, p.first, p.rest == u"-" ? QString() : p.rest);
         if (t.server->isListening())
             t.step(u"welcome back"_s);
     }},
    {"preset"_L1, [](auto &t, auto &p) { t.preset.insert(p.first, p.rest); }},
    {"address"_L1,
     [](auto &t, auto &p) {
         t.codec = linecodec::utf8;
         t.person->connectTo(p.rest, 0, p.first, {}, std::exchange(t.preset, {}));
     }},
    {"answer"_L1,
     [](auto &t, auto &p) {
         bool answered = false;
         QTimer look;
         look.callOnTimeout([&] {
             auto *prompt = qobject_cast<QInputDialog *>(QApplication::activeModalWidget());
             if (prompt == nullptr)
                 return;
             prompt->setTextValue(p.all);
             p.all.isEmpty() ? prompt->reject() : prompt->accept();
             answered = true;
         });
         look.start(1);
         QTRY_VERIFY(answered);
         t.person->window()->activateWindow();
     }},
    {"welcome"_L1,
     [](auto &t, auto &) {
         QTRY_VERIFY(t.server->hasPendingConnections());
         t.client = t.server->nextPendingConnection();
     }},
    {"<-"_L1, [](auto &t, auto &p) { t.client->write(t.codec.bytes(p.all) + "\r\n"); }},
    {"<~"_L1, [](auto &t, auto &p) { t.client->write(p.all.toLatin1()); }},
    {"->"_L1,
     [](auto &t, auto &p) {
         QTRY_VERIFY(t.client->canReadLine());
         QCOMPARE(t.codec.text(t.client->readLine()), p.all + u"\r\n");
     }},
    {"refuse"_L1, [](auto &t, auto &) { t.server->close(); }},
    {"listen"_L1, [](auto &t, auto &) { QVERIFY(t.server->listen(QHostAddress::LocalHost, t.port)); }},
    {"pass"_L1,
     [](auto &, auto &p) {
         countdown::pass(qRound(p.all.toDouble() * 1000));
         QCoreApplication::processEvents(); // what is due fires now, or not at all
     }},
    {"deaf"_L1, [](auto &t, auto &) { t.client->setReadBufferSize(1); }},
    {"close"_L1,
     [](auto &t, auto &) {
         while (t.client->waitForBytesWritten(100)) {
         }
         t.client->disconnectFromHost();
     }},
    {"gone"_L1, [](auto &t, auto &) { QTRY_COMPARE(t.client->state(), QTcpSocket::UnconnectedState); }},
    {"()"_L1,
     [](auto &t, auto &p) {
         t.person->edit(p.first, p.rest);
         t.person->press(p.first, u"Return"_s);
     }},
    {"[]"_L1, [](auto &t, auto &p) { QCOMPARE(t.person->nextLine(p.first), p.rest); }},
    {"matches"_L1,
     [](auto &t, auto &p) {
         const QString line = t.person->nextLine(p.first);
         QVERIFY2(QRegularExpression(u"^" + p.rest + u"$").match(line).hasMatch(), qPrintable(line));
     }},
    {"{}"_L1,
     [](auto &t, auto &p) {
         QCoreApplication::processEvents(); // the copy of the roster is pending
         QTRY_COMPARE(t.person->members(p.first), p.rest);
     }},
    {"sees"_L1,
     [](auto &t, auto &p) {
         QString line = u""_s;
         while (!line.isNull() && !line.contains(p.rest))
             line = t.person->nextLine(p.first);
         QVERIFY(!line.isNull());
     }},
    {"tabs"_L1, [](auto &t, auto &p) { QTRY_COMPARE(t.person->tabs().join(u" | "), p.all); }},
    {"front"_L1, [](auto &t, auto &p) { QTRY_COMPARE(t.person->frontTab(), p.all); }},
    {"select"_L1, [](auto &t, auto &p) { t.person->select(p.all); }},
    {"click"_L1, [](auto &t, auto &p) { t.person->click(p.first, p.rest); }},
    {"edit"_L1, [](auto &t, auto &p) { t.person->edit(p.first, p.rest); }},
    {"paste"_L1,
     [](auto &t, auto &p) {
         QApplication::clipboard()->setText(QString(p.rest).replace(u'|', u'\n'));
         t.person->press(p.first, u"Ctrl+V"_s);
         QMessageBox *question = nullptr;
         QTRY_VERIFY((question = t.person->window()->template findChild<QMessageBox *>()) != nullptr);
         question->button(QMessageBox::Yes)->click();
     }},
    {"press"_L1, [](auto &t, auto &p) { t.person->press(p.first, p.rest); }},
    {"keys"_L1, [](auto &t, auto &p) { t.person->press({}, p.all); }},
    {"hears"_L1, [](auto &, auto &p) { QTRY_COMPARE(user::heard(), p.all); }},
    {"input"_L1, [](auto &t, auto &p) { QCOMPARE(t.person->input(p.first), p.rest); }},
    {"state"_L1, [](auto &t, auto &p) { QTRY_COMPARE(t.person->state(p.first), p.rest); }},
    {"selected"_L1, [](auto &t, auto &p) { QTRY_COMPARE(t.person->selected(p.first), p.rest); }},
    {"news"_L1, [](auto &t, auto &p) { QTRY_COMPARE(t.person->activity(p.first), p.rest); }},
    {"choose"_L1, [](auto &t, auto &p) { t.person->choose(p.first, p.rest); }},
    {"menu"_L1,
     [](auto &t, auto &p) {
         const QString nick = p.rest.section(u' ', 0, 0);
         QCOMPARE(nick + u' ' + t.person->menu(p.first, nick).join(u" | "), p.rest);
     }},
    {"pick"_L1,
     [](auto &t, auto &p) {
         t.person->menu(p.first, p.rest.section(u' ', 0, 0), p.rest.section(u' ', 1));
     }},
    {"prefers"_L1,
     [](auto &, auto &p) {
         Config file(u"parlo"_s);
         file.setGroup(u"Chat"_s);
         file.writeEntry(p.first, p.rest);
     }},
    {"desktop"_L1,
     [](auto &t, auto &p) {
         t.bus = std::make_unique<fakebus>();
         qputenv("DBUS_SESSION_BUS_ADDRESS", t.bus->start());
         t.desktop = std::make_unique<fakedaemon>(QStringList{p.all}, &t.asked);
     }},
    {"notified"_L1,
     [](auto &t, auto &p) {
         QTRY_VERIFY(!t.asked.isEmpty());
         QCOMPARE(t.asked.takeFirst(), p.all);
     }},
    {"answers"_L1, [](auto &t, auto &p) { t.desktop->tell(p.all.split(u' ')); }},
    {"file"_L1,
     [](auto &t, auto &p) {
         const QByteArray text = p.rest.toUtf8();
         QTRY_VERIFY2(t.person->file(p.first).contains(text), t.person->file(p.first).constData());
     }},
    {"nowhere"_L1, [](auto &t, auto &p) { QVERIFY(!t.person->file(p.first).contains(p.rest.toUtf8())); }},
    {"button"_L1, [](auto &t, auto &p) { QTRY_COMPARE(t.person->button(p.first), p.rest); }},
    {"resize"_L1,
     [](auto &t, auto &p) {
         t.person->window()->resize(p.all.section(u'x', 0, 0).toInt(), p.all.section(u'x', 1).toInt());
     }},
    {"looks"_L1, [](auto &t, auto &p) { QTRY_COMPARE(t.person->looks(p.first), p.rest); }},
    {"picture"_L1,
     [](auto &t, auto &p) {
         t.step(u"resize " + p.all.section(u'-', 1));
         QVERIFY(user::picture(*t.person->window(), p.all));
         QCOMPARE(user::nameless(*t.person->window()), QStringList());
     }},
    {"warns"_L1, [](auto &, auto &p) { QTest::ignoreMessage(QtWarningMsg, qPrintable(p.all)); }},
    {"repeat"_L1,
     [](auto &t, auto &p) {
         for (int i = 0; i < p.first.toInt() && !QTest::currentTestFailed(); ++i)
             t.step(QString(p.rest).replace(u"$N"_s, QString::number(i)));
     }},
    {"ngircd"_L1, [](auto &t, auto &p) { p.all == u"start" ? t.startServer() : t.stopServer(); }},
    {"guest"_L1,
     [](auto &t, auto &p) {
         if (t.guest.state() == QTcpSocket::UnconnectedState)
             t.guest.connectToHost(QHostAddress::LocalHost, t.port);
         t.guest.write(p.all.toLatin1() + "\r\n");
     }},
    {"heard"_L1,
     [](auto &t, auto &p) { QTRY_VERIFY((t.told += t.guest.readAll()).contains(p.all.toLatin1())); }},
};

void tst_conversations::step(const QString &line)
{
    QString word = line.section(u' ', 0, 0);
    phrase p{line.section(u' ', 1), line.section(u' ', 1, 1), line.section(u' ', 2)};
    if (u"([{"_s.contains(word.front())) {
        p = {{}, word.sliced(1).chopped(1), p.all};
        word = QString(word.front()) + word.back();
    }
    const auto *found =
        std::find_if(std::begin(verbs), std::end(verbs), [&](const verb &v) { return word == v.word; });
    QVERIFY2(found != std::end(verbs), qPrintable(word));
    found->act(*this, p);
}

void tst_conversations::play_data()
{
    QTest::addColumn<QString>("file");
    const QDir scripts(QStringLiteral(TESTS "/conversations"));
    const QStringList names = scripts.entryList({u"*.txt"_s});
    QVERIFY(!names.isEmpty());
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << scripts.filePath(name);
}

void tst_conversations::play()
{
    QFETCH(const QString, file);
    QFile script(file);
    QVERIFY(script.open(QIODevice::ReadOnly | QIODevice::Text));
    const QString past =
        QDateTime::currentDateTimeUtc().addSecs(-120).toString(u"yyyy-MM-ddThh:mm:ss.zzzZ"_s);
    const QStringList lines = QString::fromUtf8(script.readAll()).split(u'\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (lines[i].isEmpty() || lines[i].startsWith(u';'))
            continue;
        QString line = lines[i];
        line.replace(u"$PORT"_s, QString::number(port)).replace(u"$PAST"_s, past);
        step(unescaped(line));
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(u"%1:%2: %3"_s.arg(file).arg(i + 1).arg(lines[i])));
    }
    if (client != nullptr && client->state() == QAbstractSocket::ConnectedState) {
        step(u"<- PING :end"_s);
        step(u"-> PONG :end"_s);
    }
    QCOMPARE(person->unreadLines().join(u'\n'), QString());
    QCOMPARE(asked.join(u'\n'), QString());
}

QTEST_MAIN(tst_conversations)
#include "tst_conversations.moc"
