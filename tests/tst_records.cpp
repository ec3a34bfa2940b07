// SPDX-License-Identifier: MIT
//
// The records of the protocol: how a line, a mask and a mode string come apart, and the order of a roster.

#include "irc/connection.h"
#include "irc/ircmessage.h"
#include "irc/ircmode.h"
#include "rows.h"
#include "session/ircchannel.h"

#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

class tst_records : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void line_data();
    void line();
    void joining();
    void named();
    void rosterDuringListing();
    void unknownMode();
    void diagnostics();
    void partialLines();
    void emptyNickOrServer();
};

void tst_records::line_data()
{
    addRows("lines");
}

void tst_records::line()
{
    QFETCH(const QString, input);
    // Each has a name in front of it.
    const ircmessage message(input.section(QStringLiteral(": "), 1));
    const auto part = [](const QString &text) { return text.isNull() ? QStringLiteral("-") : text; };
    const ircuser &from = *message.prefix();
    QStringList params;
    for (int i = 0; i < message.paramCount(); ++i)
        params.append(message.param(i, false));
    const QString seen = part(from.nick()) + u'!' + part(from.user()) + u'@' + part(from.host()) + u' ' +
                         message.command() + u' ' + params.join(u'|') +
                         (message.isCtcp() ? QStringLiteral(" (CTCP)") : QString());
    QTEST(seen, "expected");
}

void tst_records::joining()
{
    const ircmessage message(QStringLiteral("X a :b :c ::d"));
    QCOMPARE(message.allParams(true), QStringLiteral("a b :c ::d"));
    QCOMPARE(message.allParams(false), QStringLiteral("a :b :c ::d"));
    QCOMPARE(message.paramsFrom(3, true), QStringLiteral(":d"));
    QCOMPARE(message.joinParams(1, 2, true), QStringLiteral("b :c"));
    QCOMPARE(message.param(1, true), QStringLiteral("b"));
    for (const int beyond : {4, 5, 1000}) {
        QCOMPARE(message.paramsFrom(beyond, true), QString());
        QCOMPARE(message.param(beyond, true), QString());
    }
}

void tst_records::named()
{
    const ircuser me(QStringLiteral("[Ada]"));
    for (const char *text :
         {"[ada]", "hi [ADA]!", "[adamant [ada]: yes", "([ada])", "\00304[ada]: x", "\00304,12[ada]\003"})
        QVERIFY2(me.isNamedIn(QString::fromLatin1(text)), text);
    for (const char *text : {"", "ada", "[ada]1", "x[ada]", "[ada]-[ada]_", "[ad"})
        QVERIFY2(!me.isNamedIn(QString::fromLatin1(text)), text);
    QVERIFY(!ircuser().isNamedIn(QStringLiteral("x")));
}

static QString shown(const ircchannel &channel)
{
    QStringList nicks;
    for (const ircchanneluser &member : *channel.roster())
        nicks.append(member.nick());
    return nicks.join(u' ');
}

static void list(ircchannel &channel, const char *names)
{
    QStringList chunk = QString::fromLatin1(names).split(u' ');
    channel.names(&chunk);
}

void tst_records::rosterDuringListing()
{
    ircchannel channel(QStringLiteral("#c"));
    list(channel, "zoe @alice");
    QCOMPARE(shown(channel), QStringLiteral("zoe alice"));
    const ircuser bob(QStringLiteral("bob!b@h"));
    channel.join(&bob);
    QCOMPARE(shown(channel), QStringLiteral("alice bob zoe"));
    QCOMPARE(channel.findUser(QStringLiteral("bob"))->host(), QStringLiteral("h"));
    list(channel, "+dave carol");
    channel.nick(QStringLiteral("nobody"), QStringLiteral("else"));
    QCOMPARE(shown(channel), QStringLiteral("alice dave bob carol zoe"));
    channel.endNames();
    list(channel, "x");
    QCOMPARE(shown(channel), QStringLiteral("x"));
}

void tst_records::unknownMode()
{
    ircchannel channel(QStringLiteral("#c"));
    list(channel, "b @a");
    channel.endNames();
    for (const char *line : {"MODE #c +q b", "MODE #c +ov b", "MODE #c o b"}) {
        const ircmode mode{ircmessage(QString::fromLatin1(line))};
        QTest::ignoreMessage(QtWarningMsg, "unknown mode for user in this channel");
        channel.mode(&mode);
    }
    const ircmode absent{ircmessage(QStringLiteral("MODE #c +q nobody"))};
    channel.mode(&absent);
    QCOMPARE(shown(channel), QStringLiteral("a b"));
}

// Nothing on the screen shows these, so no conversation can.
void tst_records::diagnostics()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    connection conn;
    QStringList texts;
    connect(&conn, &connection::debug, this, [&](const QString &text) { texts.append(text); });
    connect(&conn, &connection::gotRawLine, this, [&](const QString &line) { texts.append(line); });
    QSignalSpy names(&conn, &connection::rpl_namreply);
    conn.connectToServer(QStringLiteral("127.0.0.1"), server.serverPort() + 65536, QStringLiteral("bob"), {},
                         {});
    QTRY_VERIFY(server.hasPendingConnections());
    QTcpSocket *peer = server.nextPendingConnection();
    peer->write("PING\r\n:bob MODE #c -o+m alice\r\n:a NICK :b\n:s 353 b = #c :@al\r\n");
    QTRY_COMPARE(names.size(), 1);
    const QStringList expected{
        QStringLiteral("Connecting to Server..."),
        QStringLiteral("Connected, Logging in..."),
        QStringLiteral("PING\r\n"),
        QStringLiteral("PING? PONG!"),
        QStringLiteral(":bob MODE #c -o+m alice\r\n"),
        QStringLiteral("Got modes: -o+m alice on #c by bob"),
        QStringLiteral("Got mode: +o alice on #c by bob"),
        QStringLiteral("Got mode: +m on #c by bob"),
        QStringLiteral(":a NICK :b\n"),
        QStringLiteral("Got nick change - a -> b"),
        QStringLiteral(":s 353 b = #c :@al\r\n"),
        QStringLiteral("name: @al"),
    };
    QCOMPARE(texts, expected);
}

void tst_records::partialLines()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    class socket line;
    QSignalSpy ready(&line, &socket::readyLine);
    QSignalSpy arrived(&line, &socket::readyRead);
    line.connectToHost(QStringLiteral("127.0.0.1"), server.serverPort());
    QTRY_VERIFY(server.hasPendingConnections());
    QTcpSocket *peer = server.nextPendingConnection();
    peer->write("one\rstill one");
    QTRY_COMPARE(line.bytesAvailable(), 13);
    QCOMPARE(ready.size(), 0);
    arrived.clear();
    peer->write("\ntwo\r\nthr");
    QTRY_COMPARE(line.bytesAvailable(), 22);
    QCOMPARE(ready.size(), arrived.size());
    QCOMPARE(line.readLine(), QByteArray("one\rstill one\n"));
    line.sendLine(QStringLiteral("n\u00e4 \u20ac\n\r\n"));
    line.sendLine({});
    QTRY_COMPARE(peer->bytesAvailable(), 8);
    QCOMPARE(peer->readAll(), QByteArray("n\xe4 ?\r\n\r\n"));
}

void tst_records::emptyNickOrServer()
{
    connection conn;
    QSignalSpy errors(&conn, &connection::errormsg);
    conn.connectToServer(QStringLiteral("host"), 1, {}, {}, {});
    conn.connectToServer({}, 1, QStringLiteral("bob"), {}, {});
    QCOMPARE(errors.value(0).value(0), QStringLiteral("Please specify a nickname with /nick"));
    QCOMPARE(errors.value(1).value(0), QStringLiteral("Please specify a server"));
    QCOMPARE(conn.identity.nick() + conn.identity.realname(), QStringLiteral("bobParlo Pocket Chat"));
    QCOMPARE(conn.socket.state(), QAbstractSocket::UnconnectedState);
}

QTEST_GUILESS_MAIN(tst_records)
#include "tst_records.moc"
