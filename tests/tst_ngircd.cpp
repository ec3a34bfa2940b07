// SPDX-License-Identifier: MIT
//
// Parlo and a real server: ngircd, which the test starts itself, with a second client to talk to.

#include "parlo.h"
#include "user.h"

#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_ngircd : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void chat();

private:
    void startServer();
    void stopServer();
    void say(const QByteArray &line) { guest.write(line + "\r\n"); }
    /// Waits until the guest has been told something that contains `text`.
    bool heard(const QByteArray &text);

    QTemporaryDir folder;
    QProcess ngircd;
    quint16 port = 0;
    QTcpSocket guest;
    QByteArray told;
};

void tst_ngircd::startServer()
{
    QFile config(folder.filePath(u"ngircd.conf"_s));
    QVERIFY(config.open(QIODevice::WriteOnly));
    config.write(
        "[Global]\nName = irc.test\nInfo = test\nListen = 127.0.0.1\nMotdPhrase = Good day\nPorts = " +
        QByteArray::number(port) + "\n[Options]\nDNS = no\nIdent = no\nPAM = no\n");
    config.close();
    config.setPermissions(config.permissions() | QFile::ReadOther);
    ngircd.start(u"/usr/sbin/ngircd"_s, {u"-n"_s, u"-f"_s, config.fileName()});
    QVERIFY(ngircd.waitForStarted());
    QTRY_VERIFY([this] {
        QTcpSocket probe;
        probe.connectToHost(QHostAddress::LocalHost, port);
        return probe.waitForConnected();
    }());
}

void tst_ngircd::stopServer()
{
    ngircd.terminate();
    QVERIFY(ngircd.waitForFinished());
}

bool tst_ngircd::heard(const QByteArray &text)
{
    return QTest::qWaitFor([&] {
        told += guest.readAll();
        return told.contains(text);
    });
}

void tst_ngircd::chat()
{
    {
        QTcpServer any;
        QVERIFY(any.listen(QHostAddress::LocalHost));
        port = any.serverPort();
    }
    startServer();
    guest.connectToHost(QHostAddress::LocalHost, port);
    say("NICK guest\r\nUSER guest 0 * :Guest\r\nJOIN #parlo");
    QVERIFY(heard(" 366 guest #parlo "));

    const QString channel = u"#parlo"_s;
    const QString query = u"guest"_s;
    user person;
    person.connectTo(port, u"me"_s, channel);
    QTRY_COMPARE(person.tabs().join(u' '), u"Server #parlo"_s);
    QTRY_COMPARE(person.members(channel), u"@guest me"_s);
    QTRY_VERIFY(person.lines(u"Server"_s).contains(u"- - Good day"_s));

    say("PRIVMSG #parlo :hello, me");
    QCOMPARE(person.nextLine(channel), u"<guest> hello, me"_s);
    person.type(channel, u"hello, guest"_s);
    QCOMPARE(person.nextLine(channel), u"<me> hello, guest"_s);
    QVERIFY(heard(" PRIVMSG #parlo :hello, guest\r\n"));
    say("PRIVMSG me :just us");
    QCOMPARE(person.nextLine(query), u"<guest> just us"_s);
    person.type(query, u"/me nods"_s);
    QCOMPARE(person.nextLine(query), u"* me nods"_s);
    QVERIFY(heard(" PRIVMSG guest :\1ACTION nods\1\r\n"));
    say("PRIVMSG me :\1VERSION\1");
    QVERIFY(heard(" NOTICE guest :\1VERSION Parlo 0.2\1\r\n"));

    say("MODE #parlo +o me");
    QCOMPARE(person.nextLine(channel), u"guest sets modes #parlo +o me"_s);
    QTRY_COMPARE(person.members(channel), u"@guest @me"_s);
    person.type(channel, u"/mode #parlo -o+v guest guest"_s);
    QCOMPARE(person.nextLine(channel), u"me sets modes #parlo -o+v guest guest"_s);
    QTRY_COMPARE(person.members(channel), u"@me +guest"_s);
    person.type(channel, u"/nick Myself"_s);
    QCOMPARE(person.nextLine(channel), u"me is now known as Myself"_s);
    person.type(channel, u"/kick guest out"_s);
    QCOMPARE(person.nextLine(channel), u"<- Myself has kicked guest (out)"_s);
    QTRY_COMPARE(person.members(channel), u"@Myself"_s);
    say("JOIN #parlo");
    QCOMPARE(person.nextLine(channel), u"-> guest has joined"_s);

    person.type(channel, u"/part"_s);
    QTRY_COMPARE(person.tabs().join(u' '), u"Server guest"_s);
    person.type(query, u"/join #parlo"_s);
    QTRY_COMPARE(person.tabs().join(u' '), u"Server guest #parlo"_s);
    QTRY_COMPARE(person.members(channel), u"guest Myself"_s);
    say("QUIT :good night");
    QVERIFY(person.nextLine(channel).startsWith(u"<- guest has quit ("_s));

    stopServer();
    QCOMPARE(person.nextLine(channel), u"- Disconnected"_s);
    QCOMPARE(person.nextLine(query), u"- Disconnected"_s);
    startServer();
    person.type(channel, u"/server 127.0.0.1 %1"_s.arg(port));
    QTRY_COMPARE(person.tabs().join(u' '), u"Server guest #parlo #parlo"_s);
    QTRY_COMPARE(person.members(channel), u"@Myself"_s);
    person.type(channel, u"/quit bye"_s);
    QCOMPARE(person.nextLine(channel), u"- Disconnected"_s);
    stopServer();
}

QTEST_MAIN(tst_ngircd)
#include "tst_ngircd.moc"
