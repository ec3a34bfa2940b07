// SPDX-License-Identifier: MIT
//
// The records of the protocol: how a line, a mask and a mode string come apart, and the order of a roster.

#include "irc/connection.h"
#include "irc/ircmessage.h"
#include "irc/ircmode.h"
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
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("sender");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("params");
    QTest::addColumn<bool>("ctcp");
    // The parameters are shown joined by "|".
    const auto row = [](const char *name, const char *text, const char *sender, const char *command,
                        const char *params, bool ctcp = false) {
        QTest::newRow(name) << QString::fromLatin1(text) << sender << command << params << ctcp;
    };
    row("trailing text is cut", ":al!a@h PRIVMSG #c :hello  there\r\n", "al!a@h", "PRIVMSG",
        "#c|:hello|there");
    row("no prefix", "PING :12345\n", "-!-@-", "PING", ":12345");
    row("server prefix", ":irc.srv 001 me :Hi", "irc.srv!-@-", "001", "me|:Hi");
    row("any mix of line ends", "PING a\n\r\r\n", "-!-@-", "PING", "a");
    row("inner carriage return parts words", "PING a\rb\r\n", "-!-@-", "PING", "a|b");
    row("no-break space parts words",
        "PING a\xa0"
        "b",
        "-!-@-", "PING", "a|b");
    row("white space at the end", "PING a \r\n", "-!-@-", "PING", "a|");
    row("white space in front", "  PING a", "-!-@-", "PING", "a");
    row("empty", "", "-!-@-", "", "");
    row("only white space", "  ", "-!-@-", "", "");
    row("only a prefix", ":srv", "srv!-@-", "", "");
    row("only a colon", ":", "!-@-", "", "");
    row("case is kept", ":A!b@C PrivMsg X", "A!b@C", "PrivMsg", "X");
    row("more signs in a mask", "::n!u!v@h@i X", ":n!u!v@h@i", "X", "");
    row("no host in a mask", ":n!u X", "n!u@-", "X", "");
    row("no user in a mask", ":a@b X", "a@b!-@-", "X", "");
    row("request", "PRIVMSG me :\1VERSION\1", "-!-@-", "PRIVMSG", "me|:VERSION", true);
    row("reply in words", "NOTICE me :\1PING 123\1", "-!-@-", "NOTICE", "me|:PING|123", true);
    row("lower case", "privmsg me :\1ACTION waves hi\1", "-!-@-", "privmsg", "me|:ACTION|waves|hi", true);
    row("without a colon", "PRIVMSG me \1VERSION\1", "-!-@-", "PRIVMSG", "me|VERSION", true);
    row("marks in the first and last word go", "NOTICE me :\1\1A x\1y \1B\1", "-!-@-", "NOTICE",
        "me|:A|x\1y|B", true);
    row("a single mark", "PRIVMSG me :\1", "-!-@-", "PRIVMSG", "me|:", true);
    row("not closed", "PRIVMSG me :\1VERSION", "-!-@-", "PRIVMSG", "me|:\1VERSION");
    row("not opened", "PRIVMSG me :VERSION\1", "-!-@-", "PRIVMSG", "me|:VERSION\1");
    row("space behind the mark", "PRIVMSG me :\1VERSION\1 ", "-!-@-", "PRIVMSG", "me|:\1VERSION\1|");
    row("no other command", "TOPIC me :\1VERSION\1", "-!-@-", "TOPIC", "me|:\1VERSION\1");
    row("no text", "PRIVMSG \1", "-!-@-", "PRIVMSG", "\1");

    // The public cases for parsers of IRC messages, those without tags. "(own)" says that our rule differs:
    // all white space parts words, also in the trailing text, and the last word may be empty.
    const char *none = "-!-@-";
    row("case: words", "foo bar baz asdf", none, "foo", "bar|baz|asdf");
    row("case: source", ":coolguy foo bar baz asdf", "coolguy!-@-", "foo", "bar|baz|asdf");
    row("case: trailing (own)", "foo bar baz :asdf quux", none, "foo", "bar|baz|:asdf|quux");
    row("case: empty trailing", "foo bar baz :", none, "foo", "bar|baz|:");
    row("case: colon in trailing", "foo bar baz ::asdf", none, "foo", "bar|baz|::asdf");
    row("case: source, trailing (own)", ":coolguy foo bar baz :asdf quux", "coolguy!-@-", "foo",
        "bar|baz|:asdf|quux");
    row("case: spaces in trailing (own)", ":coolguy foo bar baz :  asdf quux ", "coolguy!-@-", "foo",
        "bar|baz|:|asdf|quux|");
    row("case: smiley (own)", ":coolguy PRIVMSG bar :lol :) ", "coolguy!-@-", "PRIVMSG", "bar|:lol|:)|");
    row("case: source, empty trailing", ":coolguy foo bar baz :", "coolguy!-@-", "foo", "bar|baz|:");
    row("case: trailing of spaces (own)", ":coolguy foo bar baz :  ", "coolguy!-@-", "foo", "bar|baz|:|");
    row("case: last parameter", ":src JOIN #chan", "src!-@-", "JOIN", "#chan");
    row("case: last parameter, trailing", ":src JOIN :#chan", "src!-@-", "JOIN", ":#chan");
    row("case: no parameter", ":src AWAY", "src!-@-", "AWAY", "");
    row("case: no parameter but a space (own)", ":src AWAY ", "src!-@-", "AWAY", "");
    row("case: tab in the source (own)", ":cool\tguy foo bar baz", "cool!-@-", "guy", "foo|bar|baz");
    row("case: control codes in the source",
        ":coolguy!ag@net\3"
        "5w\3ork.admin PRIVMSG foo :bar baz",
        "coolguy!ag@net\3"
        "5w\3ork.admin",
        "PRIVMSG", "foo|:bar|baz");
    row("case: more of them",
        ":coolguy!~ag@n\2et\3"
        "05w\17ork.admin PRIVMSG foo :bar baz",
        "coolguy!~ag@n\2et\3"
        "05w\17ork.admin",
        "PRIVMSG", "foo|:bar|baz");
    row("case: server", ":irc.example.com COMMAND param1 param2 :param3 param3", "irc.example.com!-@-",
        "COMMAND", "param1|param2|:param3|param3");
    row("case: command alone", "COMMAND", none, "COMMAND", "");
    row("case: two spaces", ":gravel.mozilla.org 432  #momo :Erroneous Nickname: Illegal characters",
        "gravel.mozilla.org!-@-", "432", "#momo|:Erroneous|Nickname:|Illegal|characters");
    row("case: space at the end (own)", ":gravel.mozilla.org MODE #tckk +n ", "gravel.mozilla.org!-@-",
        "MODE", "#tckk|+n|");
    row("case: spaces at the end (own)", ":services.esper.net MODE #foo-bar +o foobar  ",
        "services.esper.net!-@-", "MODE", "#foo-bar|+o|foobar|");
    row("case: modes in trailing", ":SomeOp MODE #channel :+i", "SomeOp!-@-", "MODE", "#channel|:+i");
    row("case: argument in trailing", ":SomeOp MODE #channel +oo SomeUser :AnotherUser", "SomeOp!-@-", "MODE",
        "#channel|+oo|SomeUser|:AnotherUser");
    row("case: mask", ":coolguy!ag@127.0.0.1 X", "coolguy!ag@127.0.0.1", "X", "");
    row("case: mask without ident", ":coolguy!~ag@localhost X", "coolguy!~ag@localhost", "X", "");
    row("case: mask without a user is a nick (own)", ":coolguy@127.0.0.1 X", "coolguy@127.0.0.1!-@-", "X",
        "");
    row("case: mask without a host", ":coolguy!ag X", "coolguy!ag@-", "X", "");
}

void tst_records::line()
{
    QFETCH(const QString, line);
    const ircmessage message(line);
    // What a mask does not have is null.
    const auto part = [](const QString &text) { return text.isNull() ? QStringLiteral("-") : text; };
    const ircuser &from = *message.prefix();
    QTEST(QString(part(from.nick()) + u'!' + part(from.user()) + u'@' + part(from.host())), "sender");
    QTEST(message.command(), "command");
    QStringList params;
    for (int i = 0; i < message.paramCount(); ++i)
        params.append(message.param(i, false));
    QTEST(params.join(u'|'), "params");
    QTEST(message.isCtcp(), "ctcp");
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
