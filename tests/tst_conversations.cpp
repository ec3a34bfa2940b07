// SPDX-License-Identifier: MIT
//
// Plays the conversations in tests/conversations: Parlo, whole, between a scripted server and a scripted
// user. A script is read from top to bottom:
//
//   connect NICK CHANNELS      the user opens Parlo and connects; "-" joins nothing
//   -> LINE                    Parlo must have sent this line next
//   (TAB) TEXT                 the user types a text into a tab
//   [TAB] LINE                 the tab must show this line next
//   {TAB} MEMBERS              its member list must be this
//   tabs NAMES                 the tabs must be these, from left to right, separated by " | "
//   front TAB                  this tab must be in front
//   select TAB                 the user clicks a tab
//   click TAB WHAT             the user clicks a member, or the button that reads WHAT
//   edit TAB TEXT              the user types a text and does not press Return
//   press TAB KEYS             the user presses keys in the tab's input line: "Tab Shift+Tab"
//   heard TEXT                 a screen reader must be told this where the keyboard is
//   input TAB TEXT             this must stand in the input line
//   news TAB WORDS             the tab's label must show these news: "", "something happened", "new
//   messages", "for you" choose TAB NICK            the user double-clicks a member picture NAME-WIDTHxHEIGHT
//   the window, at this size, is saved as a picture close                      the server closes the
//   connection gone                       the server sees the connection end welcome back               the
//   server waits for a new connection
//
// "TAB/2" is the second tab of a name, $PORT the server's port. See rows.h for control characters. Lines that
// begin with ";" are remarks. At the end nothing may be left that Parlo sent or showed and the script did not
// ask for.

#include "ircuserbox.h"
#include "ircview.h"
#include "parlo.h"
#include "rows.h"
#include "user.h"

#include <QDir>
#include <QPushButton>
#include <QRegularExpression>
#include <QStackedWidget>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <poll.h>
#include <sys/socket.h>
#include <thread>

using namespace Qt::StringLiterals;

class tst_conversations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void play_data();
    void play();
    void flood();
    void remembers();
    void everyCommandInEveryShape();
    void endsInTheMiddle();

private:
    void step(const QString &line);
    void meetNewClient();
    void send(const QString &line) { client->write(line.toLatin1() + "\r\n"); }
    /// The next line that Parlo sent; waits for it. Null when none comes.
    QString received();

    std::unique_ptr<user> person;
    std::unique_ptr<QTcpServer> server;
    QTcpSocket *client = nullptr;
};

void tst_conversations::init()
{
    person = std::make_unique<user>();
    server = std::make_unique<QTcpServer>();
    QVERIFY(server->listen(QHostAddress::LocalHost));
    client = nullptr;
}

void tst_conversations::meetNewClient()
{
    QTRY_VERIFY(server->hasPendingConnections());
    client = server->nextPendingConnection();
}

QString tst_conversations::received()
{
    if (!QTest::qWaitFor([this] { return client->canReadLine(); }))
        return {};
    const QByteArray line = client->readLine();
    return QString::fromLatin1(line.endsWith("\r\n") ? line.chopped(2) : line + "(no CR LF)");
}

void tst_conversations::step(const QString &line)
{
    const QString word = line.section(u' ', 0, 0);
    const QString rest = line.section(u' ', 1);
    if (word == u"connect") {
        const QString channels = rest.section(u' ', 1);
        person->connectTo(server->serverPort(), rest.section(u' ', 0, 0),
                          channels == u"-" ? QString() : channels);
        meetNewClient();
    } else if (word == u"welcome") {
        meetNewClient();
    } else if (word == u"<-") {
        send(rest);
    } else if (word == u"->") {
        QCOMPARE(received(), rest);
    } else if (word == u"tabs") {
        QTRY_COMPARE(person->tabs().join(u" | "), rest);
    } else if (word == u"front") {
        QTRY_COMPARE(person->frontTab(), rest);
    } else if (word == u"select") {
        person->select(rest);
    } else if (word == u"edit") {
        person->edit(rest.section(u' ', 0, 0), rest.section(u' ', 1));
    } else if (word == u"press") {
        person->press(rest.section(u' ', 0, 0), rest.section(u' ', 1));
    } else if (word == u"keys") {
        person->press({}, rest);
    } else if (word == u"selected") {
        QTRY_COMPARE(person->selected(rest.section(u' ', 0, 0)), rest.section(u' ', 1));
    } else if (word == u"heard") {
        QTRY_COMPARE(user::heard(), rest);
    } else if (word == u"input") {
        QCOMPARE(person->input(rest.section(u' ', 0, 0)), rest.section(u' ', 1));
    } else if (word == u"news") {
        QTRY_COMPARE(person->news(rest.section(u' ', 0, 0)), rest.section(u' ', 1));
    } else if (word == u"click") {
        person->click(rest.section(u' ', 0, 0), rest.section(u' ', 1));
    } else if (word == u"choose") {
        person->choose(rest.section(u' ', 0, 0), rest.section(u' ', 1));
    } else if (word == u"picture") {
        const QStringList size = rest.section(u'-', 1).split(u'x');
        person->window()->resize(size.at(0).toInt(), size.at(1).toInt());
        QVERIFY(user::picture(*person->window(), rest));
        QCOMPARE(user::nameless(*person->window()), QStringList());
    } else if (word == u"close") {
        client->disconnectFromHost();
    } else if (word == u"gone") {
        QTRY_COMPARE(client->state(), QAbstractSocket::UnconnectedState);
    } else {
        static const QRegularExpression closing(u"[)\\]}]"_s);
        const qsizetype end = line.indexOf(closing, 1);
        const QString tab = line.mid(1, end - 1);
        const QString text = line.mid(end + 2);
        if (line.startsWith(u'('))
            person->type(tab, text);
        else if (line.startsWith(u'['))
            QCOMPARE(person->nextLine(tab), text);
        else
            QTRY_COMPARE(person->members(tab), text);
    }
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
    const QStringList lines = QString::fromUtf8(script.readAll()).split(u'\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (lines[i].isEmpty() || lines[i].startsWith(u';'))
            continue;
        step(unescaped(QString(lines[i]).replace(u"$PORT"_s, QString::number(server->serverPort()))));
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(u"%1:%2: %3"_s.arg(file).arg(i + 1).arg(lines[i])));
    }
    if (client->state() == QAbstractSocket::ConnectedState) {
        send(u"PING :the end"_s);
        QCOMPARE(received(), u"PONG :the"_s);
    }
    QCOMPARE(person->unreadLines().join(u'\n'), QString());
}

// Everything arrives, in order, however fast it comes, also when the server has gone and our answers to it
// fail. What is no line any more does not fill the memory.
void tst_conversations::flood()
{
    const QString tab = u"Server"_s;
    step(u"connect bob -"_s);
    QStringList expected;
    QByteArray bytes;
    for (int i = 0; i < 20'000; ++i) {
        expected.append(u"- line %1 of many"_s.arg(i));
        bytes += u":srv 372 bob :line %1 of many\r\n"_s.arg(i).toLatin1();
    }
    expected.append(u"- Disconnected"_s);
    // From a thread of its own a server is ahead of us, and closes while most of its lines wait.
    const std::jthread writer([&bytes, out = static_cast<int>(client->socketDescriptor())] {
        pollfd ready{out, POLLOUT, 0};
        for (qsizetype sent = 0; sent < bytes.size() && poll(&ready, 1, -1) == 1;)
            sent += qMax<qsizetype>(
                0, ::send(out, bytes.data() + sent, static_cast<size_t>(bytes.size() - sent), MSG_NOSIGNAL));
        shutdown(out, SHUT_WR);
    });
    QTRY_COMPARE(person->lines(tab).size(), expected.size());
    QCOMPARE(person->lines(tab), expected);

    // 64 KiB are a line; more are none, with an end or without.
    for (const char *end : {"\r\n", ""}) {
        person->type(tab, u"/server 127.0.0.1 %1"_s.arg(server->serverPort()));
        meetNewClient();
        client->write(":srv 372 bob :" + QByteArray(64 * 1024 - 16, 'x') + "\r\n" +
                      QByteArray(64 * 1024 + 1, 'y') + end);
        expected.append(u"- " + QString(64 * 1024 - 16, u'x'));
        expected.append(u"- The server sent a line of over 64 KiB"_s);
        expected.append(u"- Disconnected"_s);
        QTRY_COMPARE(person->lines(tab).size(), expected.size());
        QCOMPARE(person->lines(tab), expected);
    }
}

void tst_conversations::remembers()
{
    const auto open = [this] {
        step(u"connect bob #c"_s);
        send(u":bob JOIN #c"_s);
        step(u"tabs Server | #c"_s);
        return person->window()->widgetStack->currentWidget();
    };
    const auto sizes = [this](const QWidget *page) {
        const QSize window = person->window()->size();
        return QList<int>{window.width(), window.height(), page->findChild<ircview *>()->font().pointSize(),
                          page->findChild<ircuserbox *>()->maximumWidth()};
    };
    const QWidget *page = open();
    const QList<int> before = sizes(page);
    person->press(u"#c"_s, u"Ctrl++ Ctrl++ Ctrl++ Ctrl+-"_s);
    page->findChild<QPushButton *>()->click();
    person->window()->resize(300, 400);
    const QList<int> after{300, 400, before.at(2) + 2, 0};
    QCOMPARE(sizes(page), after);
    page = open();
    QTRY_COMPARE(sizes(page), after);
    person->press(u"#c"_s, u"Ctrl+0"_s);
    QCOMPARE(sizes(page).at(2), before.at(2));
}

// Whatever a server says, what we answer is a PONG or a few versions, a line each.
void tst_conversations::everyCommandInEveryShape()
{
    step(u"connect bob -"_s);
    step(u"-> USER parlo HOSTNAME 127.0.0.1 :Parlo Pocket Chat"_s);
    step(u"-> NICK bob"_s);
    const QByteArray many(10'000, '\1');
    QByteArray letters;
    QByteArray channels;
    for (int i = 0; i < 500; ++i)
        letters += "+o-vhkb"[i % 7];
    for (int i = 0; i < 2'000; ++i)
        channels += "#c" + QByteArray::number(i) + ',';
    const QByteArrayList words{"001",  "353",  "366",  "372",  "PING", "PRIVMSG", "NOTICE", "JOIN",
                               "PART", "QUIT", "MODE", "NICK", "KICK", "join",    ""};
    const QByteArrayList prefixes{"", ": ", ":!@ ", ":bob ", ":x!y@z "};
    const QByteArrayList parameters{"",
                                    " :",
                                    " #c",
                                    " bob",
                                    " #c :",
                                    " bob \1\1",
                                    " bob :\1",
                                    " #c bob",
                                    " bob = #c",
                                    " = #c :@bob +@x :",
                                    " #c " + letters + " a b c",
                                    " bob +o x",
                                    ' ' + channels,
                                    " bob :" + many,
                                    " bob :\1VERSION\1",
                                    " bob :\1ACTION\1"};
    for (const QByteArray &word : words) {
        for (const QByteArray &parameter : parameters) {
            for (const QByteArray &prefix : prefixes)
                client->write(prefix + word + parameter + "\r\n" + prefix + word.toLower() + parameter +
                              "\r\n");
        }
    }
    for (const char *line :
         {" PRIVMSG bob :hi\r\n", " PRIVMSG bob :\1VERSION\1\r\n", " JOIN #c\r\n", " NICK x\r\n"})
        client->write(':' + QByteArray(60LL * 1024, 'n') + line);
    step(u"<- PING :the end"_s);
    QString line;
    int versions = 0;
    while (line != u"PONG :the") {
        line = received();
        QVERIFY(!line.isNull());
        versions += line.startsWith(u"NOTICE ") ? 1 : 0;
        QVERIFY2(line.startsWith(u"PONG ") || line.endsWith(u" :\1VERSION Parlo 0.2\1"),
                 qPrintable(line.left(80)));
    }
    QVERIFY(versions == 5);
}

// The sanitizers are the judge of this one.
void tst_conversations::endsInTheMiddle()
{
    const QString again = u"/server 127.0.0.1 %1"_s.arg(server->serverPort());
    step(u"connect bob #c"_s);
    // A close is waiting while we leave, are kicked and are cut off in the middle of a line.
    send(u":bob JOIN #c"_s);
    step(u"tabs Server | #c"_s);
    send(u":bob JOIN #d"_s);
    step(u"tabs Server | #c | #d"_s);
    client->write(":bob PART #c\r\n:x KICK #c bob\r\n:s 353 bob = #d :a b\r\n:x PRIVMSG #d :half a l");
    person->type(u"#c"_s, u"/close"_s);
    client->disconnectFromHost();
    step(u"tabs Server | #d"_s);
    step(u"[#d] - Disconnected"_s);
    // The last of many servers in a row is the one that we talk to.
    for (int i = 0; i < 20; ++i)
        person->type(u"Server"_s, again);
    QTRY_VERIFY([this] {
        while (server->hasPendingConnections()) {
            client = server->nextPendingConnection();
            connect(client, &QTcpSocket::disconnected, client, &QObject::deleteLater);
        }
        return client->state() == QAbstractSocket::ConnectedState && client->canReadLine();
    }());
    step(u"-> USER parlo HOSTNAME 127.0.0.1 :Parlo Pocket Chat"_s);
    // The window goes while a connect runs, a close waits, and lines are there to be read.
    client->write(QByteArray(":x PRIVMSG #d :text\r\n").repeated(10'000) + ":bob PART #d\r\n:s 353 bob");
    QTRY_VERIFY(person->lines(u"#d"_s).size() > 100);
    person->type(u"#d"_s, u"/close"_s);
    person->type(u"Server"_s, again);
    person.reset();
}

QTEST_MAIN(tst_conversations)
#include "tst_conversations.moc"
