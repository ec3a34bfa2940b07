// SPDX-License-Identifier: MIT
//
// Desktop notifications, on a bus of the test's own. Each row of rows/notifications.txt is a text, or a script of steps.

#include "notifier.h"
#include "rows.h"

#include <QChildEvent>
#include <QDBusContext>
#include <QDBusMessage>
#include <QLocalServer>
#include <QLocalSocket>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString service = u"org.freedesktop.Notifications"_s;
const QString path = u"/org/freedesktop/Notifications"_s;

QString decoded(const QString &text)
{
    return QString::fromUtf8(QByteArray::fromPercentEncoding(text.toUtf8()));
}

} // namespace

/// A notification daemon. It writes down what it is asked for.
class fakedaemon : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    fakedaemon(QStringList itsAbilities, QStringList *writesTo)
        : seen(writesTo),
          abilities(std::move(itsAbilities)),
          bus(QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                            QString::number(quintptr(this))))
    {
        bus.registerObject(path, this, QDBusConnection::ExportAllSlots);
        if (!abilities.isEmpty() && !bus.registerService(service))
            qFatal("there is another daemon");
    }
    ~fakedaemon() override
    {
        bus.unregisterObject(path);
        QCoreApplication::removePostedEvents(this);
        QDBusConnection::disconnectFromBus(bus.name());
    }

    /// The name of a signal, an id, and a text or a number.
    void tell(const QStringList &words)
    {
        QDBusMessage message = QDBusMessage::createSignal(path, service, words[0]);
        const uint number = words[2].toUInt();
        message.setArguments({words[1].toUInt(), number > 0 ? QVariant(number) : QVariant(words[2])});
        bus.send(message);
    }

    bool refuses = false;
    /// Happens while it is asked to show something, before it answers.
    std::function<void()> meanwhile = [] {};

public Q_SLOTS:
    QStringList GetCapabilities() // NOLINT(readability-identifier-naming)
    {
        seen->append(u"asked"_s);
        return abilities;
    }
    uint Notify(const QString &application, uint replaced, const QString &icon, const QString &title,
                const QString &body, const QStringList &actions, const QVariantMap &hints, int expiry)
    {
        seen->append((QStringList{title, body, QString::number(replaced)} + actions.mid(0, 1)).join(u'|'));
        if (application != u"Parlo" || icon != u"chat.parlo.Parlo" || hints[u"desktop-entry"_s] != icon ||
            hints[u"category"_s] != u"im.received"_s || expiry != -1)
            seen->append(u"as somebody else"_s);
        meanwhile();
        if (std::exchange(refuses, false))
            sendErrorReply(QDBusError::Failed);
        return replaced == 0 ? ++lastId : replaced;
    }
    void CloseNotification(uint id) { seen->append(u"close "_s + QString::number(id)); }

private:
    QStringList *seen;
    QStringList abilities;
    QDBusConnection bus;
    uint lastId = 40;
};

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
    void cleanupTestCase();
    void rows_data() { addRows("notifications"); }
    void rows();

private:
    void play(const QString &step);

    QProcess dbus;
    QByteArray address;
    QTemporaryDir folder;

    std::unique_ptr<countednotifier> notes;
    std::unique_ptr<fakedaemon> daemon;
    QStringList meanwhile;
    QStringList seen;
};

void tst_notifier::initTestCase()
{
    dbus.start(u"dbus-daemon"_s, {u"--session"_s, u"--print-address"_s, u"--nofork"_s});
    QVERIFY(dbus.waitForReadyRead());
    address = dbus.readLine().trimmed();
    qputenv("XDG_RUNTIME_DIR", folder.path().toUtf8());
}

void tst_notifier::cleanupTestCase()
{
    dbus.terminate();
    dbus.waitForFinished();
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
