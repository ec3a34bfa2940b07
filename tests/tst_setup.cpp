// SPDX-License-Identifier: MIT
//
// The connect dialog, the preset editor and the settings file behind them. Most cases are in
// tests/rows/dialogs.txt.

#include "config.h"
#include "connectbox.h"
#include "fingers.h"
#include "ircuser.h"
#include "isupport.h"
#include "lastsession.h"
#include "manners.h"
#include "parlo.h"
#include "plaintab.h"
#include "presetbox.h"
#include "rows.h"
#include "settingsbox.h"
#include "user.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QInputMethodEvent>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <functional>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

const QString oddName = u"@@1;,\"\\#\t\u00fc\u202e\U0001f600ff "_s;

/// The dialog, and the variables that it writes to.
struct asked
{
    QString nick;
    QString server;
    int port = 0;
    QStringList channels;
    connectbox box{&nick, &server, &port, &channels};

    QListWidget *list() { return box.findChild<QListWidget *>(); }
    QTabWidget *pages() { return box.findChild<QTabWidget *>(); }
    QString outcome()
    {
        if (box.result() != 0)
            return u"connects "_s + nick + u' ' + server + u' ' + QString::number(port) + u' ' +
                   channels.join(u',');
        QStringList names;
        for (int i = 0; i < list()->count(); ++i)
            names.append(list()->item(i)->text() == oddName ? u"odd"_s : list()->item(i)->text());
        return nick + u' ' + server + u": " + names.join(u'|');
    }
};

/// The fields that can be typed into.
QList<QLineEdit *> fields(const QWidget &page)
{
    QList<QLineEdit *> found = page.findChildren<QLineEdit *>();
    found.removeIf([](const QLineEdit *field) { return !field->isEnabled(); });
    return found;
}

void fill(const QWidget &page, const QString &texts)
{
    const QStringList each = texts.isEmpty() ? QStringList() : texts.split(u'|');
    for (qsizetype i = 0; i < each.size(); ++i)
        fields(page).at(i)->setText(each.at(i));
}

QString filled(const QWidget &page)
{
    QStringList texts;
    for (const QLineEdit *field : fields(page))
        texts.append(field->text());
    return texts.join(u'|');
}

/// Which buttons can be pressed, and what a screen reader gets for the widget with the focus.
QString state(const QWidget &dialog)
{
    QString seen;
    for (const QPushButton *button : dialog.findChildren<QPushButton *>())
        seen += button->isEnabled() ? button->text() + u' ' : QString();
    const QAccessibleInterface *heard = QAccessible::queryAccessibleInterface(dialog.focusWidget());
    return seen + u"/ " + heard->text(QAccessible::Name) + u' ' + heard->text(QAccessible::Description);
}

void press(const QWidget &dialog, const QString &text)
{
    for (QPushButton *button : dialog.findChildren<QPushButton *>()) {
        if (button->text() != text)
            continue;
        button->setFocus();
        return button->click();
    }
    QFAIL(qPrintable(text));
}

} // namespace

class tst_setup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void dialogs_data() { addRows("dialogs"); }
    void dialogs();
    void fitTheScreen();
    void twoAtOnce();
    void preferencesAtOnce();

private:
    void step(const QString &line);
    void openTab(bool minds);
    irctab *tab() const { return main->findChild<plaintab *>(); }
    void useEditor(const QString &verb, const QString &rest);
    QByteArray file() const;

    std::unique_ptr<QTemporaryDir> home;
    std::optional<asked> dialog;
    std::unique_ptr<parlo> main;
    bool agrees = true;
    QString said;
};

void tst_setup::init()
{
    home = std::make_unique<QTemporaryDir>();
    qputenv("XDG_CONFIG_HOME", home->path().toUtf8());
    qputenv("f", home->filePath(u"parlo.conf"_s).toUtf8());
    qputenv("parlo", PARLO);
    std::signal(SIGXFSZ, SIG_IGN);
    dialog.reset();
    main.reset();
    agrees = true;
    said.clear();
}

QByteArray tst_setup::file() const
{
    QFile f(home->filePath(u"parlo.conf"_s));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void tst_setup::dialogs()
{
    QFETCH(const QString, input);
    QFETCH(const QString, expected);
    const QString save = u"Add %1|n|s ; Quick ann|host ; Connect"_s.arg(oddName);
    for (const QString &line : QString(input).replace(u"save"_s, save).split(u" ; "_s))
        step(line);
    if (dialog && (said.isEmpty() || dialog->box.result() != 0))
        said += (said.isEmpty() ? u""_s : u": "_s) + dialog->outcome();
    QCOMPARE(said, expected);
}

void tst_setup::step(const QString &line)
{
    const QString verb = line.section(u' ', 0, 0);
    const QString rest = line.section(u' ', 1);
    QTimer editor;
    editor.setSingleShot(true);
    connect(&editor, &QTimer::timeout, this, [&] { useEditor(verb, rest); });
    editor.start(0);
    QTimer message;
    connect(&message, &QTimer::timeout, this, [this] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            said = box->windowTitle() == u"Parlo" ? box->text() : u"wrong title"_s;
            box->done(agrees ? QDialog::Accepted : QDialog::Rejected);
        }
    });
    message.start(0);
    const QMap<QString, std::function<void()>> verbs{
        {u"$"_s,
         [&] {
             QCOMPARE(QProcess::execute(u"sh"_s, {u"-c"_s, rest}), 0);
         }},
        {u"open"_s,
         [&] {
             dialog.emplace().box.proposeLast();
             dialog->box.show();
         }},
        {u"ended"_s,
         [&] {
             const QStringList words = rest.split(u' ');
             lastsession{ircaddress(words[0]), words.value(1).toUShort(), words.value(2),
                         words.value(3).split(u',', Qt::SkipEmptyParts)}
                 .save();
         }},
        {u"joins"_s, [&] { QCOMPARE(ircaddress(dialog->server).channels().join(u','), rest); }},
        {u"reads"_s, [&] { QCOMPARE(dialog->nick, rest); }},
        {u"row"_s, [&] { dialog->list()->setCurrentRow(rest.toInt()); }},
        {u"key"_s, [&] { QTest::keyClick(dialog->list(), QKeySequence::fromString(rest)[0].key()); }},
        {u"double"_s,
         [&] {
             const QRect at = dialog->list()->visualItemRect(dialog->list()->item(rest.toInt()));
             QTest::mouseClick(dialog->list()->viewport(), Qt::LeftButton, {}, at.center());
             QTest::mouseDClick(dialog->list()->viewport(), Qt::LeftButton, {}, at.center());
         }},
        {u"disagree"_s, [&] { agrees = false; }},
        {u"tab"_s, [&] { openTab(rest == u"by"); }},
        {u"paste"_s,
         [&] {
             QApplication::clipboard()->setText(QString(rest).replace(u"&"_s, u"x|"_s).replace(u'|', u'\n'));
             QTest::keySequence(tab()->input, QKeySequence::Paste);
             QCoreApplication::processEvents();
         }},
        {u"type"_s, [&] { QTest::keySequence(tab()->input, QKeySequence(rest)); }},
        {u"compose"_s,
         [&] {
             QInputMethodEvent preedit(u"\u00b4"_s, {});
             QApplication::sendEvent(tab()->input, &preedit);
             QInputMethodEvent commit;
             commit.setCommitString(rest);
             QApplication::sendEvent(tab()->input, &commit);
         }},
        {u"page"_s,
         [&] {
             auto *page = main->findChild<settingsbox *>();
             QTRY_COMPARE(QApplication::activeWindow(), page);
             for (const QString &key : rest.split(u' '))
                 QTest::keySequence(page->focusWidget(), QKeySequence::fromString(key));
         }},
        {u"menu"_s,
         [&] {
             const QPoint middle = main->tabBar->rect().center();
             QContextMenuEvent key(QContextMenuEvent::Keyboard, middle, main->tabBar->mapToGlobal(middle));
             const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
             if (rest == u"key")
                 QApplication::sendEvent(main->tabBar, &key);
             else
                 QTest::touchEvent(main->tabBar, screen.get()).press(0, middle);
             QTRY_VERIFY(QApplication::activePopupWidget());
             QTest::touchEvent(main->tabBar, screen.get()).release(0, middle);
             QTest::keySequence(QApplication::activePopupWidget(), QKeySequence(Qt::Key_S));
             said = main->findChild<settingsbox *>()->windowTitle();
         }},
        {u"shut"_s, [&] { main.reset(); }},
        {u"write"_s, [&] { tab()->input->setText(rest); }},
        {u"line"_s,
         [&] {
             const QString note =
                 QAccessible::queryAccessibleInterface(tab()->input)->text(QAccessible::Description);
             said += u'[' + tab()->input->text() + u']' + note;
         }},
        {u"state"_s, [&] { said = state(dialog->box); }},
        {u"look"_s, [&] { press(dialog->box, rest); }},
        {u"Quick"_s,
         [&] {
             dialog->pages()->setCurrentIndex(1);
             fill(*dialog->pages()->currentWidget(), rest);
         }},
    };
    verbs.value(verb, [&] { press(dialog->box, verb); })();
}

/// Opens the window without a connection. Where lines are minded, one has 100 characters.
void tst_setup::openTab(bool minds)
{
    static const manners today = manners::today();
    static const ircuser nobody;
    QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); });
    main = std::make_unique<parlo>();
    main->show();
    QVERIFY(QTest::qWaitForWindowActive(main.get()));
    if (minds)
        tab()->follow(isupport::classic(), today, nobody);
    tab()->setState({});
    tab()->mindLines([](const QString &text) { return text.size() > 800 ? 0 : (text.size() + 99) / 100; },
                     [this](const QStringList &lines) {
                         said += u" sent "_s +
                                 (lines.size() < 9 ? lines.join(u'|') : QString::number(lines.size()));
                     });
}

/// Uses the editor if it is open, and cancels it if it is still open after that.
void tst_setup::useEditor(const QString &verb, const QString &rest)
{
    auto *editor = qobject_cast<presetbox *>(QApplication::activeModalWidget());
    if (editor == nullptr)
        return;
    if (verb == u"look") {
        said = editor->windowTitle() + u": " + filled(*editor);
    } else {
        fill(*editor, rest);
        press(*editor, u"OK"_s);
    }
    if (editor->isVisible()) {
        QTest::ignoreMessage(QtWarningMsg, "Canceled");
        press(*editor, u"Cancel"_s);
    }
}

// Runs on a small screen, too.
void tst_setup::fitTheScreen()
{
    step(u"open"_s);
    QVERIFY(user::picture(dialog->box, u"connect-first"_s));
    step(u"$ printf '[Presets]\\n0=Libera\\n1=At home\\n' >$f"_s);
    step(u"open"_s);
    connectbox &box = dialog->box;
    QVERIFY(user::picture(box, u"connect-presets"_s));
    QVERIFY(dialog->list()->hasFocus() && dialog->list()->currentRow() == 0);
    QVERIFY(dialog->list()->visualItemRect(dialog->list()->item(0)).height() >= fingerHeight(0));
    QCOMPARE(box.isMaximized(), isSmall(*box.screen()));
    dialog->pages()->setCurrentIndex(1);
    QVERIFY(user::picture(box, u"connect-quick"_s));
    QList<preset> presets{{u"Libera"_s, u"irc.libera.chat"_s, 6667, u"ada"_s, {}, {u"#parlo"_s}}};
    presetbox editor(&presets, 0, false, &box);
    QVERIFY(user::picture(editor, u"preset-editor"_s));
    settingsbox settings({}, &box);
    QVERIFY(settings.isMaximized() || settings.size().boundedTo({240, 320}) == settings.size());
    settings.resize(settings.size().expandedTo({240, 320}));
    QVERIFY(user::picture(settings, u"settings"_s));
    const QSize screen = box.screen()->availableSize();
    QVERIFY(screen.height() < 300 || editor.size() == QSize(200, 250));
    for (const QDialog *shown : std::initializer_list<QDialog *>{&box, &editor, &settings}) {
        QCOMPARE(user::nameless(*shown), QStringList());
        QCOMPARE(shown->frameSize().boundedTo(screen), shown->frameSize());
        for (const QWidget *part : shown->findChildren<QWidget *>()) {
            const auto *label = qobject_cast<const QLabel *>(part);
            const bool button = part->inherits("QPushButton");
            if (part->visibleRegion().isEmpty() || part->window() != shown ||
                !(label != nullptr || button || part->inherits("QLineEdit")))
                continue;
            const QRect place(part->mapTo(shown, QPoint()), part->size());
            QVERIFY2(shown->rect().contains(place), part->metaObject()->className());
            QVERIFY(part->height() >= (button ? fingerHeight(0) : part->fontMetrics().height()));
            QVERIFY2(label == nullptr || label->width() >= label->sizeHint().width(), "a label is cut off");
        }
    }
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

// A signal may end the program at any time. The comment is lost when the file is written.
void tst_setup::preferencesAtOnce()
{
    step(u"$ printf '; remark\\n[Window]\\nFontSize=12\\nWidth=240\\nHeight=320\\n' >$f"_s);
    for (const bool changed : {false, true}) {
        QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); });
        parlo window;
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QVERIFY(file().startsWith("; remark"));
        if (!changed)
            continue;
        window.resize(300, 400);
        QTRY_COMPARE(
            file(),
            QByteArray("[Window]\nFontSize=12\nHeight=400\nScrollback=0\nTimes=0\nUserList=1\nWidth=300\n"));
        QTest::keyClick(&window, Qt::Key_Plus, Qt::ControlModifier);
        QTRY_VERIFY(file().contains("FontSize=13"));
    }
}

QTEST_MAIN(tst_setup)
#include "tst_setup.moc"
