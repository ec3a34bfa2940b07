// SPDX-License-Identifier: MIT
//
// Parlo and a real server: ngircd, which the test starts itself, with a second client to talk to.

#include "app/parlo.h"
#include "user.h"

#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

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
    QFile config(folder.filePath(QStringLiteral("ngircd.conf")));
    QVERIFY(config.open(QIODevice::WriteOnly));
    config.write(
        "[Global]\nName = irc.test\nInfo = test\nListen = 127.0.0.1\nMotdPhrase = Good day\nPorts = " +
        QByteArray::number(port) + "\n[Options]\nDNS = no\nIdent = no\nPAM = no\n");
    config.close();
    config.setPermissions(config.permissions() | QFile::ReadOther);
    ngircd.start(QStringLiteral("/usr/sbin/ngircd"),
                 {QStringLiteral("-n"), QStringLiteral("-f"), config.fileName()});
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

    const QString channel = QStringLiteral("#parlo");
    const QString query = QStringLiteral("guest");
    user person;
    person.connectTo(port, QStringLiteral("me"), channel);
    QTRY_COMPARE(person.tabs().join(u' '), QStringLiteral("Server #parlo"));
    QTRY_COMPARE(person.members(channel), QStringLiteral("@guest me"));
    QTRY_VERIFY(person.lines(QStringLiteral("Server")).contains(QStringLiteral("- - Good day")));

    say("PRIVMSG #parlo :hello, me");
    QCOMPARE(person.nextLine(channel), QStringLiteral("<guest> hello, me"));
    person.type(channel, QStringLiteral("hello, guest"));
    QCOMPARE(person.nextLine(channel), QStringLiteral("<me> hello, guest"));
    QVERIFY(heard(" PRIVMSG #parlo :hello, guest\r\n"));
    say("PRIVMSG me :just us");
    QCOMPARE(person.nextLine(query), QStringLiteral("<guest> just us"));
    person.type(query, QStringLiteral("/me nods"));
    QCOMPARE(person.nextLine(query), QStringLiteral("* me nods"));
    QVERIFY(heard(" PRIVMSG guest :\1ACTION nods\1\r\n"));
    say("PRIVMSG me :\1VERSION\1");
    QVERIFY(heard(" NOTICE guest :\1VERSION Parlo 0.2\1\r\n"));

    say("MODE #parlo +o me");
    QCOMPARE(person.nextLine(channel), QStringLiteral("guest sets modes #parlo +o me"));
    QTRY_COMPARE(person.members(channel), QStringLiteral("@guest @me"));
    person.type(channel, QStringLiteral("/mode #parlo -o+v guest guest"));
    QCOMPARE(person.nextLine(channel), QStringLiteral("me sets modes #parlo -o+v guest guest"));
    QTRY_COMPARE(person.members(channel), QStringLiteral("@me +guest"));
    person.type(channel, QStringLiteral("/nick Myself"));
    QCOMPARE(person.nextLine(channel), QStringLiteral("me is now known as Myself"));
    person.type(channel, QStringLiteral("/kick guest out"));
    QCOMPARE(person.nextLine(channel), QStringLiteral("<- Myself has kicked guest (out)"));
    QTRY_COMPARE(person.members(channel), QStringLiteral("@Myself"));
    say("JOIN #parlo");
    QCOMPARE(person.nextLine(channel), QStringLiteral("-> guest has joined"));

    person.type(channel, QStringLiteral("/part"));
    QTRY_COMPARE(person.tabs().join(u' '), QStringLiteral("Server guest"));
    person.type(query, QStringLiteral("/join #parlo"));
    QTRY_COMPARE(person.tabs().join(u' '), QStringLiteral("Server guest #parlo"));
    QTRY_COMPARE(person.members(channel), QStringLiteral("guest Myself"));
    say("QUIT :good night");
    QVERIFY(person.nextLine(channel).startsWith(QStringLiteral("<- guest has quit (")));

    stopServer();
    QCOMPARE(person.nextLine(channel), QStringLiteral("- Disconnected"));
    QCOMPARE(person.nextLine(query), QStringLiteral("- Disconnected"));
    startServer();
    person.type(channel, QStringLiteral("/server 127.0.0.1 %1").arg(port));
    QTRY_COMPARE(person.tabs().join(u' '), QStringLiteral("Server guest #parlo #parlo"));
    QTRY_COMPARE(person.members(channel), QStringLiteral("@Myself"));
    person.type(channel, QStringLiteral("/quit bye"));
    QCOMPARE(person.nextLine(channel), QStringLiteral("- Disconnected"));
    stopServer();
}

QTEST_MAIN(tst_ngircd)
#include "tst_ngircd.moc"
