// SPDX-License-Identifier: MIT
//
// Makes the pictures in docs/ from one scripted conversation: ./dev screenshots. Run as a test, it makes them
// in a temporary folder, and fails when one cannot be made or shows nothing.

#include "app/parlo.h"
#include "setup/connectbox.h"
#include "setup/presetbox.h"
#include "user.h"

#include <QApplication>
#include <QMap>
#include <QSet>
#include <QTabWidget>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

class tst_pictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void dialogs();
    void conversation_data();
    void conversation();

private:
    void save(QWidget &window, const QString &name);

    QTemporaryDir scratch;
};

void tst_pictures::save(QWidget &window, const QString &name)
{
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCoreApplication::processEvents();
    const QImage picture = window.grab().toImage();
    QSet<QRgb> colours;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            colours.insert(picture.pixel(x, y));
    }
    QVERIFY(colours.size() > 10);
    const QString folder = qEnvironmentVariable("PICTURES", scratch.path());
    QVERIFY(picture.save(folder + u'/' + name + u".png"));
}

void tst_pictures::dialogs()
{
    const user someone;
    QList<preset> presets(2);
    presets[0] = {QStringLiteral("Libera"),
                  QStringLiteral("irc.libera.chat"),
                  6667,
                  QStringLiteral("ada"),
                  {},
                  {QStringLiteral("#parlo"), QStringLiteral("#debian")}};
    presets[1].name = QStringLiteral("At home");
    preset::save(QStringLiteral("parlo"), presets);
    QString nick;
    QString server;
    int port = 0;
    QStringList channels;
    connectbox box(&nick, &server, &port, &channels);
    box.show();
    save(box, QStringLiteral("connect-presets"));
    box.findChild<QTabWidget *>()->setCurrentIndex(1);
    save(box, QStringLiteral("connect-quick"));
    presetbox editor(&presets, 0, false);
    editor.show();
    save(editor, QStringLiteral("preset-editor"));
}

void tst_pictures::conversation_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("240x320") << QSize(240, 320);
    QTest::newRow("480x640") << QSize(480, 640);
}

void tst_pictures::conversation()
{
    QFETCH(const QSize, size);
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    user ada;
    ada.connectTo(server.serverPort(), QStringLiteral("ada"), QStringLiteral("#parlo"));
    ada.window()->resize(size);
    QTRY_VERIFY(server.hasPendingConnections());
    QTcpSocket *peer = server.nextPendingConnection();
    peer->write(":irc.example.org 001 ada :Welcome to the example network, ada\r\n"
                ":irc.example.org 002 ada :Your host is irc.example.org\r\n"
                ":irc.example.org 375 ada :- Message of the day -\r\n"
                ":irc.example.org 372 ada :- Be kind to each other.\r\n"
                ":irc.example.org 376 ada :End of MOTD command.\r\n"
                ":ada JOIN :#parlo\r\n"
                ":irc.example.org 353 ada = #parlo :@grace %linus +alan ada dennis edsger\r\n"
                ":irc.example.org 366 ada #parlo :End of NAMES list\r\n"
                ":grace PRIVMSG #parlo :\2Release day!\2 Everything is \3"
                "3green\3.\r\n"
                ":alan PRIVMSG #parlo :it runs on my handheld, with four tabs open\r\n"
                ":barbara!b@example.org JOIN :#parlo\r\n"
                ":grace MODE #parlo +v barbara\r\n"
                ":barbara PRIVMSG #parlo :\1ACTION waves\1\r\n"
                ":dennis PART #parlo :back to work\r\n"
                ":linus PRIVMSG #parlo :and the big screen is just as good\r\n"
                ":barbara PRIVMSG ada :do you have a minute?\r\n");
    const QString channel = QStringLiteral("#parlo");
    const QString query = QStringLiteral("barbara");
    QTRY_COMPARE(ada.lines(query).size(), 1);
    ada.type(query, QStringLiteral("always"));
    ada.type(channel, QStringLiteral("hello, everyone"));
    const QString suffix = QStringLiteral("-") + QString::fromLatin1(QTest::currentDataTag());
    const QMap<QString, QString> names{{channel, QStringLiteral("channel")},
                                       {query, QStringLiteral("query")},
                                       {QStringLiteral("Server"), QStringLiteral("server")}};
    for (const QString &tab : names.keys()) {
        ada.select(tab);
        save(*ada.window(), names.value(tab) + suffix);
    }
}

QTEST_MAIN(tst_pictures)
#include "tst_pictures.moc"
