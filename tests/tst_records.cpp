// SPDX-License-Identifier: MIT
//
// What no conversation can test: how a line is split, a roster and a socket by themselves, diagnostics.

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
    void line_data() { addRows("lines"); }
    void line();
    void named_data() { addRows("named"); }
    void named();
    void roster();
    void diagnostics();
    void partialLines();
};

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

void tst_records::named()
{
    QFETCH(const QString, input);
    QTEST(mentions(input.section(u": "_s, 1), input.section(u": "_s, 0, 0)) ? u"yes"_s : u"no"_s, "expected");
}

void tst_records::roster()
{
    ircchannel channel(u"#c"_s, isupport::classic());
    QStringList chunk{u"zoe"_s, u"@alice"_s};
    channel.names(&chunk);
    QCOMPARE(channel.roster()->first().nick(), u"zoe"_s);
    // The connection would send each letter alone.
    const ircmode together{ircmessage(u"MODE #c +ov zoe"_s)};
    QTest::ignoreMessage(QtWarningMsg, "unknown mode for user in this channel");
    channel.mode(&together);
    QCOMPARE(channel.roster()->first().nick(), u"alice"_s);
    const ircuser bob(u"bob!b@h"_s);
    channel.join(&bob);
    QCOMPARE(channel.findUser(u"BOB"_s)->host(), u"h"_s);
}

void tst_records::diagnostics()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    connection conn;
    conn.connectToServer({}, 1, u"bob"_s, {}, {});
    conn.connectToServer(u"host"_s, 1, {}, u"else"_s, u"Else"_s);
    QCOMPARE(conn.identity.nick() + conn.identity.user() + conn.identity.realname(),
             u"bobparloParlo Pocket Chat"_s);
    QStringList texts;
    const auto keep = [&](const QString &text) { texts.append(text.trimmed()); };
    connect(&conn, &connection::debug, this, keep);
    connect(&conn, &connection::gotRawLine, this, keep);
    conn.connectToServer(u"127.0.0.1"_s, server.serverPort() + 65536, u"bob"_s, {}, {});
    QTRY_VERIFY(server.hasPendingConnections());
    server.nextPendingConnection()->write(
        "PING\r\n:bob MODE #c -o+m alice\r\n:a NICK :b\n:s 353 b = #c :@al\r\n");
    QTRY_COMPARE(
        texts.join(u" / "),
        u"Connecting to Server... / Connected, Logging in... / PING / PING? PONG! / "
        ":bob MODE #c -o+m alice / Got modes: -o+m alice on #c by bob / Got mode: +o alice on #c by bob / "
        "Got mode: +m on #c by bob / :a NICK :b / Got nick change - a -> b / "
        ":s 353 b = #c :@al / name: @al"_s);
}

void tst_records::partialLines()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    class socket line;
    QSignalSpy ready(&line, &socket::readyLine);
    QSignalSpy heard(&line, &socket::heard);
    line.connectToHost(u"127.0.0.1"_s, server.serverPort());
    QTRY_VERIFY(server.hasPendingConnections());
    QTcpSocket *peer = server.nextPendingConnection();
    peer->write("one\rstill one");
    QTRY_COMPARE(heard.size(), 1);
    QCOMPARE(ready.size(), 0);
    peer->write("\ntwo\r\nthr");
    QTRY_COMPARE(heard.size(), 2);
    QCOMPARE(ready.size(), 1);
    QCOMPARE(line.takeLine(), u"one\rstill one\n"_s);
    line.sendLine(u"n\u00e4 \u20ac\n\r\n"_s);
    line.sendLine({});
    QTRY_COMPARE(peer->bytesAvailable(), 8);
    QCOMPARE(peer->readAll(), QByteArray("n\xe4 ?\r\n\r\n"));
}

QTEST_GUILESS_MAIN(tst_records)
#include "tst_records.moc"
