// SPDX-License-Identifier: MIT
//
// Desktop notifications, on a bus of the test's own. Each row of rows/notifications.txt is a text, or a script of steps.

#include "fakedaemon.h"
#include "notifier.h"
#include "rows.h"

#include <QChildEvent>
#include <QLocalServer>
#include <QLocalSocket>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

QString decoded(const QString &text)
{
    return QString::fromUtf8(QByteArray::fromPercentEncoding(text.toUtf8()));
}

} // namespace

/// Knows how many answers have come: each has a child of the notifier.
class countednotifier : public notifier
{
public:
    int answers = 0;

protected:
    void childEvent(QChildEvent *event) override { answers += event->removed() ? 1 : 0; }
};

class tst_notifier : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void rows_data() { addRows("notifications"); }
    void rows();

private:
    void play(const QString &step);

    fakebus bus;
    QByteArray address;
    QTemporaryDir folder;

    std::unique_ptr<countednotifier> notes;
    std::unique_ptr<fakedaemon> daemon;
    QStringList meanwhile;
    QStringList seen;
};

void tst_notifier::initTestCase()
{
    address = bus.start();
    QVERIFY(!address.isEmpty());
    qputenv("XDG_RUNTIME_DIR", folder.path().toUtf8());
}

void tst_notifier::rows()
{
    QFETCH(QString, input);
    QFETCH(const QString, expected);
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    qunsetenv("XDG_ACTIVATION_TOKEN");
    seen.clear();
    notes = std::make_unique<countednotifier>();
    connect(notes.get(), &notifier::activated, this, [this](const QString &key) {
        seen.append(u"click on "_s + key + qEnvironmentVariable("XDG_ACTIVATION_TOKEN"));
        notes->withdraw(key);
    });
    const QString ability = input.section(u' ', 0, 0);
    if (ability != u"do:")
        input = u"do: daemon "_s + ability + u" / note "_s + input.section(u' ', 1) + u" / answers 3"_s;
    for (const QString &step : input.sliced(4).split(u" / "_s))
        play(step);
    notes.reset();
    QVERIFY(QTest::qWaitFor([&] { return seen.size() > expected.count(u" / "_s); }));
    daemon.reset();
    QCOMPARE(seen.join(u" / "_s), decoded(expected));
}

void tst_notifier::play(const QString &step)
{
    const QString verb = step.section(u' ', 0, 0);
    const QString rest = step.section(u' ', 1);
    if (verb == u"notify") {
        notes->notify(rest.section(u' ', 0, 0), rest.section(u' ', 0, 0), rest.section(u' ', 1));
    } else if (verb == u"note") {
        notes->notify(u"a"_s, decoded(rest), decoded(rest));
    } else if (verb == u"withdraw") {
        notes->withdraw(rest);
    } else if (verb == u"daemon") {
        daemon.reset();
        daemon = std::make_unique<fakedaemon>(rest.split(u','), &seen);
        daemon->meanwhile = [this] {
            for (const QString &now :
                 meanwhile.isEmpty() ? QStringList() : meanwhile.takeFirst().split(u", "_s))
                play(now);
        };
    } else if (verb == u"meanwhile") {
        meanwhile.append(rest);
    } else if (verb == u"refuse") {
        daemon->refuses = true;
    } else if (verb == u"tell") {
        daemon->tell(rest.split(u' '));
    } else if (verb == u"lie") {
        fakedaemon(QStringList(), &seen).tell(rest.split(u' '));
    } else if (verb == u"answers") {
        QVERIFY(QTest::qWaitFor([&] { return notes->answers == rest.toInt(); }));
    } else if (verb == u"gets") {
        QVERIFY(QTest::qWaitFor([&] { return seen.contains(rest); }));
    } else if (verb == u"bus") {
        qputenv("DBUS_SESSION_BUS_ADDRESS", rest == u"back" ? address : rest.toUtf8());
    } else if (verb == u"silence") {
        // Takes the connection, answers nothing, and hangs up later.
        QLocalServer silent;
        QVERIFY(silent.listen(folder.filePath(u"bus"_s)));
        play(rest);
        QVERIFY(silent.waitForNewConnection(5000));
        silent.nextPendingConnection()->abort();
    } else {
        QFAIL(qPrintable(u"no such step: "_s + step));
    }
}

QTEST_GUILESS_MAIN(tst_notifier)
#include "tst_notifier.moc"
