// SPDX-License-Identifier: MIT
//
// The records of the protocol: how a line, a mask and a mode string come apart, and the order of a roster.

#include "connection.h"
#include "ircchannel.h"
#include "ircmessage.h"
#include "ircmode.h"
#include "isupport.h"
#include "mention.h"
#include "rows.h"

#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

using namespace Qt::StringLiterals;

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
    const ircmessage message(input.section(u": "_s, 1));
    const auto part = [](const QString &text) { return text.isNull() ? u"-"_s : text; };
    const ircuser &from = *message.prefix();
    QStringList params;
    for (int i = 0; i < message.paramCount(); ++i)
        params.append(message.param(i, false));
    const QString seen = part(from.nick()) + u'!' + part(from.user()) + u'@' + part(from.host()) + u' ' +
                         message.command() + u' ' + params.join(u'|') +
                         (message.isCtcp() ? u" (CTCP)"_s : QString());
    QTEST(seen, "expected");
}

void tst_records::joining()
{
    const ircmessage message(u"X a :b :c ::d"_s);
    QCOMPARE(message.allParams(true), u"a b :c ::d"_s);
    QCOMPARE(message.allParams(false), u"a :b :c ::d"_s);
    QCOMPARE(message.paramsFrom(3, true), u":d"_s);
    QCOMPARE(message.joinParams(1, 2, true), u"b :c"_s);
    QCOMPARE(message.param(1, true), u"b"_s);
    for (const int beyond : {4, 5, 1000}) {
        QCOMPARE(message.paramsFrom(beyond, true), QString());
        QCOMPARE(message.param(beyond, true), QString());
    }
}

void tst_records::named()
{
    const auto me = u"[Ada]"_s;
    for (const char *text :
         {"[ada]", "hi [ADA]!", "[adamant [ada]: yes", "([ada])", "\00304[ada]: x", "\00304,12[ada]\003"})
        QVERIFY2(mentions(QString::fromLatin1(text), me), text);
    for (const char *text : {"", "ada", "[ada]1", "x[ada]", "[ada]-[ada]_", "[ad"})
        QVERIFY2(!mentions(QString::fromLatin1(text), me), text);
    QVERIFY(!mentions(u"x"_s, {}));
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
    ircchannel channel(u"#c"_s, isupport::classic());
    list(channel, "zoe @alice");
    QCOMPARE(shown(channel), u"zoe alice"_s);
    const ircuser bob(u"bob!b@h"_s);
    channel.join(&bob);
    QCOMPARE(shown(channel), u"alice bob zoe"_s);
    QCOMPARE(channel.findUser(u"bob"_s)->host(), u"h"_s);
    list(channel, "+dave carol");
    channel.nick(u"nobody"_s, u"else"_s);
    QCOMPARE(shown(channel), u"alice dave bob carol zoe"_s);
    channel.endNames();
    list(channel, "x");
    QCOMPARE(shown(channel), u"x"_s);
}

void tst_records::unknownMode()
{
    ircchannel channel(u"#c"_s, isupport::classic());
    list(channel, "b @a");
    channel.endNames();
    for (const char *line : {"MODE #c +q b", "MODE #c +ov b", "MODE #c o b"}) {
        const ircmode mode{ircmessage(QString::fromLatin1(line))};
        QTest::ignoreMessage(QtWarningMsg, "unknown mode for user in this channel");
        channel.mode(&mode);
    }
    const ircmode absent{ircmessage(u"MODE #c +q nobody"_s)};
    channel.mode(&absent);
    QCOMPARE(shown(channel), u"a b"_s);
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
    conn.connectToServer(u"127.0.0.1"_s, server.serverPort() + 65536, u"bob"_s, {}, {});
    QTRY_VERIFY(server.hasPendingConnections());
    QTcpSocket *peer = server.nextPendingConnection();
    peer->write("PING\r\n:bob MODE #c -o+m alice\r\n:a NICK :b\n:s 353 b = #c :@al\r\n");
    QTRY_COMPARE(names.size(), 1);
    const QStringList expected{
        u"Connecting to Server..."_s,
        u"Connected, Logging in..."_s,
        u"PING\r\n"_s,
        u"PING? PONG!"_s,
        u":bob MODE #c -o+m alice\r\n"_s,
        u"Got modes: -o+m alice on #c by bob"_s,
        u"Got mode: +o alice on #c by bob"_s,
        u"Got mode: +m on #c by bob"_s,
        u":a NICK :b\n"_s,
        u"Got nick change - a -> b"_s,
        u":s 353 b = #c :@al\r\n"_s,
        u"name: @al"_s,
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
    line.connectToHost(u"127.0.0.1"_s, server.serverPort());
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
    line.sendLine(u"n\u00e4 \u20ac\n\r\n"_s);
    line.sendLine({});
    QTRY_COMPARE(peer->bytesAvailable(), 8);
    QCOMPARE(peer->readAll(), QByteArray("n\xe4 ?\r\n\r\n"));
}

void tst_records::emptyNickOrServer()
{
    connection conn;
    QSignalSpy errors(&conn, &connection::errormsg);
    conn.connectToServer(u"host"_s, 1, {}, {}, {});
    conn.connectToServer({}, 1, u"bob"_s, {}, {});
    QCOMPARE(errors.value(0).value(0), u"Please specify a nickname with /nick"_s);
    QCOMPARE(errors.value(1).value(0), u"Please specify a server"_s);
    QCOMPARE(conn.identity.nick() + conn.identity.realname(), u"bobParlo Pocket Chat"_s);
    QCOMPARE(conn.socket.state(), QAbstractSocket::UnconnectedState);
}

QTEST_GUILESS_MAIN(tst_records)
#include "tst_records.moc"
