// SPDX-License-Identifier: MIT
//
// The connect dialog, the preset editor and the settings file behind them.

#include "config.h"
#include "connectbox.h"
#include "presetbox.h"
#include "user.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <functional>

using namespace Qt::StringLiterals;

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

/// Presses "OK" in the message box that `provoke` opens, if it does; its caption and text.
QString messageOf(const std::function<void()> &provoke)
{
    QString said;
    QTimer ok;
    QObject::connect(&ok, &QTimer::timeout, [&] {
        if (auto *message = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            said = message->windowTitle() + u": " + message->text();
            message->accept();
        }
    });
    ok.start(0);
    provoke();
    return said;
}

void expectMessage(const QString &text, const std::function<void()> &provoke)
{
    QCOMPARE(messageOf(provoke), QString(u"Parlo: " + text));
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
    void twoAtOnce();

private:
    void write(const QByteArray &text);
    QByteArray file() const;
    QString path() const { return home->filePath(u"parlo.conf"_s); }

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
    QCOMPARE(a.box.windowTitle(), u"Connect to IRC Server"_s);
    QCOMPARE(a.pages()->tabText(a.pages()->currentIndex()), u"Presets"_s);
    QCOMPARE(a.names(), QStringList());
    QCOMPARE(a.nick + u' ' + a.server, u"ParloUser irc.libera.chat"_s);
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
            expectMessage(why, [&] { press(a.box, u"Connect"_s); });
        };
        refused({}, {}, u"You must specify a nickname"_s);
        refused(u"a b"_s, {}, u"You can't have a space in your nick"_s);
        refused(u"a"_s, {}, u"You must specify an IRC server"_s);
        refused(u"a"_s, u"b c"_s, u"You can't have a space\nin the server name"_s);
        QVERIFY(!QFile::exists(path()));
        QCOMPARE(a.box.result(), 0);
        fields[1]->setText(u"host,1 \\%\""_s.remove(u' '));
        press(a.box, u"Connect"_s);
        QCOMPARE(a.box.result(), 1);
        QCOMPARE(a.port, 6667);
        QCOMPARE(a.channels, QStringList());
    }
    asked again;
    QCOMPARE(again.nick + u' ' + again.server, u"a host,1\\%\""_s);
    QCOMPARE(QFile::permissions(path()) & ~(QFile::ReadUser | QFile::WriteUser),
             QFile::ReadOwner | QFile::WriteOwner);
}

void tst_setup::presetsFromFile()
{
    write("[Presets]\n0=\"@@One; \\xfc\\x62\"\n1=Two, with a comma ; two\n3=Never\n"
          "[Preset0]\nnick=bob\nserver=host\nport=7000\npassword=secret\nchannels=#a,#b\n"
          "[Preset1]\nport=abc\nchannels=#a #b, ,&c\n");
    asked a;
    QCOMPARE(a.names(), QStringList({u"@One; \u00fcb"_s, u"Two, with a comma"_s}));
    // The row with the focus is not a choice: only a selected one is.
    a.list()->setCurrentRow(0, QItemSelectionModel::NoUpdate);
    press(a.box, u"Connect"_s);
    QCOMPARE(a.box.result(), 0);
    a.list()->setCurrentRow(0);
    press(a.box, u"Connect"_s);
    QCOMPARE(a.box.result(), 1);
    QCOMPARE(u"%1 %2 %3 %4"_s.arg(a.nick, a.server).arg(a.port).arg(a.channels.join(u'|')),
             u"bob host 7000 #a|#b"_s);
    const preset second = preset::load(u"parlo"_s).at(1);
    QCOMPARE(second.nick + u' ' + second.server, u"ParloUser irc.libera.chat"_s);
    QCOMPARE(second.port, 0U);
    QCOMPARE(second.channels.join(u'|'), u"#a|#b|&c"_s);
}

void tst_setup::addEditDelete()
{
    write("[Presets]\n0=One\n1=Two\n2=Three\n[Preset0]\npassword=secret\n");
    asked a;
    a.list()->setCurrentRow(1);
    inNextDialog([](QWidget &editor) {
        QCOMPARE(editor.windowTitle(), u"Add Preset"_s);
        QCOMPARE(field(editor, u"Port: "_s)->text(), u"6667"_s);
        field(editor, u"Preset name: "_s)->setText(u"New"_s);
        field(editor, u"Nickname: "_s)->setText(u"n"_s);
        field(editor, u"Server: "_s)->setText(u"s"_s);
        field(editor, u"Port: "_s)->setText(u"abc"_s);
        field(editor, u"Channels: "_s)->setText(u"#a,,#b  #c"_s);
        press(editor, u"OK"_s);
    });
    press(a.box, u"Add"_s);
    QCOMPARE(a.names().join(u' '), u"One New Two Three"_s);
    QVERIFY(file().contains("[Preset1]\nchannels=\"#a,#b,#c\"\nnick=n\npassword=\nport=0\nserver=s\n"));

    a.list()->setCurrentRow(0);
    inNextDialog([](QWidget &editor) {
        QCOMPARE(editor.windowTitle(), u"Edit Preset"_s);
        field(editor, u"Preset name: "_s)->setText(u"First"_s);
        press(editor, u"OK"_s);
    });
    press(a.box, u"Edit"_s);
    QCOMPARE(preset::load(u"parlo"_s).at(0).name, u"First"_s);
    QCOMPARE(preset::load(u"parlo"_s).at(0).password, u"secret"_s);

    // However long it is, what is only looked at stays as it is.
    QList<preset> wide = preset::load(u"parlo"_s);
    for (int i = 0; i < 200; ++i)
        wide[0].channels.append(u"#channel" + QString::number(i));
    presetbox unread(&wide, 0, false);
    const QStringList channels = wide[0].channels;
    press(unread, u"OK"_s);
    QCOMPARE(wide[0].channels, channels);

    const QByteArray before = file();
    for (const char *button : {"Add", "Edit"}) {
        a.list()->setCurrentRow(0);
        QTest::ignoreMessage(QtWarningMsg, "Canceled");
        inNextDialog([](QWidget &editor) { press(editor, u"Cancel"_s); });
        press(a.box, QString::fromLatin1(button));
    }
    QCOMPARE(file(), before);

    // The group of the last one stays in the file, and nothing reads it.
    a.list()->setCurrentRow(3);
    press(a.box, u"Del"_s);
    QVERIFY(file().contains("[Preset3]"));
    asked again;
    QCOMPARE(again.names().join(u' '), u"First New Two"_s);
}

void tst_setup::editorComplains()
{
    QList<preset> presets;
    presetbox editor(&presets, -1, true);
    const auto refused = [&](const char *label, const char *text, const char *why) {
        expectMessage(QString::fromLatin1(why), [&] { press(editor, u"OK"_s); });
        field(editor, QString::fromLatin1(label))->setText(QString::fromLatin1(text));
    };
    refused("Preset name: ", "p", "You must specify a preset name");
    refused("Nickname: ", "a b", "You must specify a nickname");
    refused("Nickname: ", "a", "You cannot have a space in your nickname");
    refused("Server: ", "a b", "You must specify an IRC server");
    refused("Server: ", "s", "You cannot have a space in the server name");
    QVERIFY(presets.isEmpty());
    press(editor, u"OK"_s);
    QCOMPARE(editor.result(), 1);
    QCOMPARE(presets.size(), 1);
}

void tst_setup::returnMeansConnect()
{
    write("[Presets]\n0=Libera\n1=At home\n");
    asked a;
    QVERIFY(user::picture(a.box, u"connect-presets"_s));
    a.pages()->setCurrentIndex(1);
    QVERIFY(user::picture(a.box, u"connect-quick"_s));
    QCOMPARE(user::nameless(a.box), QStringList());
    a.pages()->setCurrentIndex(0);
    a.list()->setFocus();
    a.list()->setCurrentRow(0);
    QTest::keyClick(a.list(), Qt::Key_Return);
    QCOMPARE(a.box.result(), 1);
}

void tst_setup::editorFits()
{
    QList<preset> presets{{u"Libera"_s, u"irc.libera.chat"_s, 6667, u"ada"_s, {}, {u"#parlo"_s}}};
    presetbox editor(&presets, 0, false);
    QVERIFY(user::picture(editor, u"preset-editor"_s));
    QCOMPARE(user::nameless(editor), QStringList());
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
    // Shell commands, with the file as $f: what makes it, and what must hold after saving.
    QTest::addColumn<QString>("make");
    QTest::addColumn<QString>("check");
    QTest::addColumn<QString>("nick");
    QTest::addColumn<bool>("saved");
    const auto row = [](const char *name, const char *make, const char *check, const char *nick = "ParloUser",
                        bool saved = true) {
        QTest::newRow(name) << QString::fromLatin1(make) << QString::fromLatin1(check)
                            << QString::fromLatin1(nick) << saved;
    };
    const char *same = "cmp $f.old $f.broken";
    row("garbage", R"(printf '\377\0[[[=\n]=%%%%\\x\n\n' | tee $f.old >$f)", same);
    row("zeros", R"(printf '[QuickConnect]\nNick=bob\n\0=' | tee $f.old >$f)", same, "bob");
    row("Latin-1", R"(printf '[QuickConnect]\nNick=bob\nx=\374' | tee $f.old >$f)", same, "bob");
    row("stray line", R"(printf '[QuickConnect]\nNick=bob\nmore\n' | tee $f.old >$f)", same, "bob");
    row("cut in a value", R"(printf '[QuickConnect]\nNick=bob\nServer="ir' | tee $f.old >$f)", same, "bob");
    row("cut in a group", R"(printf '[QuickConnect]\nNick=bob\n[Pres' | tee $f.old >$f)", same, "bob");
    row("no groups", "echo Nick=bob >$f", "grep ^Nick=bob $f && ! ls $f.broken");
    // As a date it would be a polygon with more corners than there is memory.
    row("typed value",
        R"-(printf '%s\n' '[Presets]' '1="@DateTime(\x0\x0\x0\x56\x89\x50\x4e\x47\xd\xa\x1a\xa)"' >$f)-",
        "! ls $f.broken");
    row("100 MB", "yes '' | head -c 200000 >$f; truncate -s 100M $f",
        "test $(stat -c %s $f.broken) = 104857600");
    row("one kept before", "echo a >$f; echo b >$f.broken", "grep b $f.broken && grep a $f.broken2");
    row("directory", "mkdir $f; touch $f/x", "ls $f.broken/x");
    row("FIFO", "mkfifo $f", "test -p $f.broken");
    row("link to a device", "ln -s /dev/zero $f", "test -L $f.broken && test -c /dev/zero");
    row("link", R"(printf '[QuickConnect]\nNick=bob\n' >$f.real; ln -s $f.real $f)",
        "test -L $f && grep ann $f.real", "bob");
    row("dangling link", "ln -s $f.real $f", "test -L $f && test $(stat -c %a $f.real) = 600");
    row("no directory", "rmdir ${f%/*}", "test $(stat -c %a $f) = 600");
    row("directory is a file", "rmdir ${f%/*}; touch ${f%/*}", "test -f ${f%/*}", "ParloUser", false);
    row("locked for ever", "echo more | tee $f.old >$f; mkdir $f.lock", "cmp $f.old $f", "ParloUser", false);
    row("disk full",
        "{ seq 999 | sed 's/$/=x/'; echo more; } | tee $f.old >$f; prlimit --pid $PPID --fsize=999:",
        "prlimit --pid $PPID --fsize=unlimited: && cmp $f.old $f", "ParloUser", false);
}

void tst_setup::brokenFiles()
{
    QFETCH(const QString, make);
    QFETCH(const QString, check);
    QFETCH(const QString, nick);
    QFETCH(const bool, saved);
    const auto shell = [](const QString &script) { return QProcess::execute(u"sh"_s, {u"-c"_s, script}); };
    const auto name = u"@@1;,\"\\#\t\u00fc\u202e\U0001f600ff "_s;
    const QString complaint = saved ? QString() : u"Parlo: The settings\ncould not be saved"_s;
    qputenv("f", path().toUtf8());
    std::signal(SIGXFSZ, SIG_IGN);
    QCOMPARE(shell(make), 0);
    {
        asked a;
        QCOMPARE(a.nick, nick);
        inNextDialog([&](QWidget &editor) {
            field(editor, u"Preset name: "_s)->setText(name);
            field(editor, u"Nickname: "_s)->setText(u"n"_s);
            field(editor, u"Server: "_s)->setText(u"s"_s);
            press(editor, u"OK"_s);
        });
        QCOMPARE(messageOf([&] { press(a.box, u"Add"_s); }), complaint);
        a.pages()->setCurrentIndex(1);
        a.box.setNick(u"ann"_s);
        a.box.setServer(u"host"_s);
        QCOMPARE(messageOf([&] { press(a.box, u"Connect"_s); }), complaint);
        QCOMPARE(a.box.result(), 1);
    }
    QCOMPARE(shell(check), 0);
    if (!saved)
        return;
    asked again;
    QCOMPARE(again.nick, u"ann"_s);
    QCOMPARE(again.names(), QStringList(name));
}

void tst_setup::twoAtOnce()
{
    Config one(u"parlo"_s);
    {
        Config two(u"parlo"_s);
        two.writeEntry(u"two"_s, u"2\n2"_s);
    }
    one.writeEntry(u"one"_s, u"1 "_s);
    QVERIFY(one.save());
    QCOMPARE(file(), QByteArray("one=\"1 \"\ntwo=\"2\\x000a2\"\n"));
}

QTEST_MAIN(tst_setup)
#include "tst_setup.moc"
