// SPDX-License-Identifier: MIT
//
// The connect dialog, the preset editor and the settings file behind them.

#include "platform/config.h"
#include "setup/connectbox.h"
#include "setup/presetbox.h"
#include "user.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>

namespace {

/// What the dialog hands out, and the dialog.
struct asked
{
    QString nick;
    QString server;
    int port = 0;
    QStringList channels;
    connectbox box{&nick, &server, &port, &channels};

    QListWidget *list() { return box.findChild<QListWidget *>(); }
    QTabWidget *pages() { return box.findChild<QTabWidget *>(); }
    QStringList names()
    {
        QStringList texts;
        for (int i = 0; i < list()->count(); ++i)
            texts.append(list()->item(i)->text());
        return texts;
    }
};

QLineEdit *field(const QWidget &dialog, const QString &label)
{
    for (const QLabel *l : dialog.findChildren<QLabel *>()) {
        if (l->text() == label)
            return qobject_cast<QLineEdit *>(l->buddy());
    }
    return nullptr;
}

void press(const QWidget &dialog, const QString &text)
{
    for (QPushButton *button : dialog.findChildren<QPushButton *>()) {
        if (button->text() == text)
            return button->click();
    }
    QFAIL(qPrintable(text));
}

/// Does something in the next modal dialog, as soon as it runs.
void inNextDialog(const std::function<void(QWidget &)> &act)
{
    QTimer::singleShot(0, [act] { act(*QApplication::activeModalWidget()); });
}

/// Presses "OK" in a message box that must say `text`.
void expectMessage(const QString &text, const std::function<void()> &provoke)
{
    QString said;
    inNextDialog([&](QWidget &dialog) {
        auto &message = dynamic_cast<QMessageBox &>(dialog);
        said = message.windowTitle() + u": " + message.text();
        message.accept();
    });
    provoke();
    QCOMPARE(said, QString(u"Parlo: " + text));
}

} // namespace

class tst_setup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void firstRun();
    void quickConnect();
    void presetsFromFile();
    void addEditDelete();
    void editorComplains();
    void returnMeansConnect();
    void editorFits();
    void brokenFiles_data();
    void brokenFiles();

private:
    void write(const QByteArray &text);
    QByteArray file() const;
    QString path() const { return home->filePath(QStringLiteral("parlo.conf")); }

    std::unique_ptr<QTemporaryDir> home;
};

void tst_setup::init()
{
    home = std::make_unique<QTemporaryDir>();
    qputenv("XDG_CONFIG_HOME", home->path().toUtf8());
}

void tst_setup::write(const QByteArray &text)
{
    QFile f(path());
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(text);
}

QByteArray tst_setup::file() const
{
    QFile f(path());
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void tst_setup::firstRun()
{
    asked a;
    QCOMPARE(a.box.windowTitle(), QStringLiteral("Connect to IRC Server"));
    QCOMPARE(a.pages()->tabText(a.pages()->currentIndex()), QStringLiteral("Presets"));
    QCOMPARE(a.names(), QStringList());
    QCOMPARE(a.nick + u' ' + a.server, QStringLiteral("ParloUser irc.libera.chat"));
    for (const char *button : {"Connect", "Edit", "Del"})
        press(a.box, QString::fromLatin1(button));
    QCOMPARE(a.box.result(), 0);
    QVERIFY(!QFile::exists(path()));
}

void tst_setup::quickConnect()
{
    {
        asked a;
        a.pages()->setCurrentIndex(1);
        const QList<QLineEdit *> fields = a.pages()->currentWidget()->findChildren<QLineEdit *>();
        const auto refused = [&](const QString &nick, const QString &server, const QString &why) {
            fields[0]->setText(nick);
            fields[1]->setText(server);
            expectMessage(why, [&] { press(a.box, QStringLiteral("Connect")); });
        };
        refused({}, {}, QStringLiteral("You must specify a nickname"));
        refused(QStringLiteral("a b"), {}, QStringLiteral("You can't have a space in your nick"));
        refused(QStringLiteral("a"), {}, QStringLiteral("You must specify an IRC server"));
        refused(QStringLiteral("a"), QStringLiteral("b c"),
                QStringLiteral("You can't have a space\nin the server name"));
        QVERIFY(!QFile::exists(path()));
        QCOMPARE(a.box.result(), 0);
        fields[1]->setText(QStringLiteral("host,1 \\%\"").remove(u' '));
        press(a.box, QStringLiteral("Connect"));
        QCOMPARE(a.box.result(), 1);
        QCOMPARE(a.port, 6667);
        QCOMPARE(a.channels, QStringList());
    }
    asked again;
    QCOMPARE(again.nick + u' ' + again.server, QStringLiteral("a host,1\\%\""));
    QCOMPARE(QFile::permissions(path()) & ~(QFile::ReadUser | QFile::WriteUser),
             QFile::ReadOwner | QFile::WriteOwner);
}

void tst_setup::presetsFromFile()
{
    write("[Presets]\n0=One\n1=Two, with a comma\n3=Never\n"
          "[Preset0]\nnick=bob\nserver=host\nport=7000\npassword=secret\nchannels=#a,#b\n"
          "[Preset1]\nport=abc\nchannels=#a #b, ,&c\n");
    asked a;
    QCOMPARE(a.names(), QStringList({QStringLiteral("One"), QStringLiteral("Two,with a comma")}));
    // The row with the focus is not a choice: only a selected one is.
    a.list()->setCurrentRow(0, QItemSelectionModel::NoUpdate);
    press(a.box, QStringLiteral("Connect"));
    QCOMPARE(a.box.result(), 0);
    a.list()->setCurrentRow(0);
    press(a.box, QStringLiteral("Connect"));
    QCOMPARE(a.box.result(), 1);
    QCOMPARE(QStringLiteral("%1 %2 %3 %4").arg(a.nick, a.server).arg(a.port).arg(a.channels.join(u'|')),
             QStringLiteral("bob host 7000 #a|#b"));
    const preset second = preset::load(QStringLiteral("parlo")).at(1);
    QCOMPARE(second.nick + u' ' + second.server, QStringLiteral("ParloUser irc.libera.chat"));
    QCOMPARE(second.port, 0U);
    QCOMPARE(second.channels.join(u'|'), QStringLiteral("#a|#b|&c"));
}

void tst_setup::addEditDelete()
{
    write("[Presets]\n0=One\n1=Two\n2=Three\n[Preset0]\npassword=secret\n");
    asked a;
    a.list()->setCurrentRow(1);
    inNextDialog([](QWidget &editor) {
        QCOMPARE(editor.windowTitle(), QStringLiteral("Add Preset"));
        QCOMPARE(field(editor, QStringLiteral("Port: "))->text(), QStringLiteral("6667"));
        field(editor, QStringLiteral("Preset name: "))->setText(QStringLiteral("New"));
        field(editor, QStringLiteral("Nickname: "))->setText(QStringLiteral("n"));
        field(editor, QStringLiteral("Server: "))->setText(QStringLiteral("s"));
        field(editor, QStringLiteral("Port: "))->setText(QStringLiteral("abc"));
        field(editor, QStringLiteral("Channels: "))->setText(QStringLiteral("#a,,#b  #c"));
        press(editor, QStringLiteral("OK"));
    });
    press(a.box, QStringLiteral("Add"));
    QCOMPARE(a.names().join(u' '), QStringLiteral("One New Two Three"));
    QVERIFY(file().contains("[Preset1]\nchannels=\"#a,#b,#c\"\nnick=n\npassword=\nport=0\nserver=s\n"));

    a.list()->setCurrentRow(0);
    inNextDialog([](QWidget &editor) {
        QCOMPARE(editor.windowTitle(), QStringLiteral("Edit Preset"));
        field(editor, QStringLiteral("Preset name: "))->setText(QStringLiteral("First"));
        press(editor, QStringLiteral("OK"));
    });
    press(a.box, QStringLiteral("Edit"));
    QCOMPARE(preset::load(QStringLiteral("parlo")).at(0).name, QStringLiteral("First"));
    QCOMPARE(preset::load(QStringLiteral("parlo")).at(0).password, QStringLiteral("secret"));

    const QByteArray before = file();
    for (const char *button : {"Add", "Edit"}) {
        a.list()->setCurrentRow(0);
        QTest::ignoreMessage(QtWarningMsg, "Canceled");
        inNextDialog([](QWidget &editor) { press(editor, QStringLiteral("Cancel")); });
        press(a.box, QString::fromLatin1(button));
    }
    QCOMPARE(file(), before);

    // The group of the last one stays in the file, and nothing reads it.
    a.list()->setCurrentRow(3);
    press(a.box, QStringLiteral("Del"));
    QVERIFY(file().contains("[Preset3]"));
    asked again;
    QCOMPARE(again.names().join(u' '), QStringLiteral("First New Two"));
}

void tst_setup::editorComplains()
{
    QList<preset> presets;
    presetbox editor(&presets, -1, true);
    const auto refused = [&](const char *label, const char *text, const char *why) {
        expectMessage(QString::fromLatin1(why), [&] { press(editor, QStringLiteral("OK")); });
        field(editor, QString::fromLatin1(label))->setText(QString::fromLatin1(text));
    };
    refused("Preset name: ", "p", "You must specify a preset name");
    refused("Nickname: ", "a b", "You must specify a nickname");
    refused("Nickname: ", "a", "You cannot have a space in your nickname");
    refused("Server: ", "a b", "You must specify an IRC server");
    refused("Server: ", "s", "You cannot have a space in the server name");
    QVERIFY(presets.isEmpty());
    press(editor, QStringLiteral("OK"));
    QCOMPARE(editor.result(), 1);
    QCOMPARE(presets.size(), 1);
}

void tst_setup::returnMeansConnect()
{
    write("[Presets]\n0=Libera\n1=At home\n");
    asked a;
    QVERIFY(user::picture(a.box, QStringLiteral("connect-presets")));
    a.pages()->setCurrentIndex(1);
    QVERIFY(user::picture(a.box, QStringLiteral("connect-quick")));
    a.pages()->setCurrentIndex(0);
    a.list()->setFocus();
    a.list()->setCurrentRow(0);
    QTest::keyClick(a.list(), Qt::Key_Return);
    QCOMPARE(a.box.result(), 1);
}

void tst_setup::editorFits()
{
    QList<preset> presets{{QStringLiteral("Libera"),
                           QStringLiteral("irc.libera.chat"),
                           6667,
                           QStringLiteral("ada"),
                           {},
                           {QStringLiteral("#parlo")}}};
    presetbox editor(&presets, 0, false);
    QVERIFY(user::picture(editor, QStringLiteral("preset-editor")));
    QCOMPARE(editor.size(), QSize(200, 250));
    for (const QWidget *part : editor.findChildren<QWidget *>()) {
        if (!part->inherits("QLabel") && !part->inherits("QLineEdit") && !part->inherits("QPushButton"))
            continue;
        const QRect place(part->mapTo(&editor, QPoint()), part->size());
        QVERIFY(editor.rect().contains(place));
        QVERIFY2(part->height() >= part->fontMetrics().height(), qPrintable(part->objectName()));
        if (const auto *label = qobject_cast<const QLabel *>(part))
            QVERIFY2(label->width() >= label->sizeHint().width(), qPrintable(label->text()));
    }
}

void tst_setup::brokenFiles_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("garbage") << QByteArray("\0\xff[[[=\n]=%%\\x\n\n", 16).repeated(50);
    QTest::newRow("cut off") << QByteArray("[QuickConnect]\nNick=\"bo");
    QTest::newRow("no groups") << QByteArray("Nick=bob\n");
}

void tst_setup::brokenFiles()
{
    QFETCH(const QByteArray, text);
    write(text);
    asked a;
    QCOMPARE(a.server, QStringLiteral("irc.libera.chat"));
    QCOMPARE(a.names(), QStringList());
}

QTEST_MAIN(tst_setup)
#include "tst_setup.moc"
