// SPDX-License-Identifier: MIT
#include "fakedaemon.h"

#include <QCoreApplication>
#include <QDBusMessage>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString service = u"org.freedesktop.Notifications"_s;
const QString path = u"/org/freedesktop/Notifications"_s;

} // namespace

fakebus::~fakebus()
{
    dbus.terminate();
    dbus.waitForFinished();
}

QByteArray fakebus::start()
{
    dbus.start(u"dbus-daemon"_s, {u"--session"_s, u"--print-address"_s, u"--nofork"_s});
    dbus.waitForReadyRead();
    return dbus.readLine().trimmed();
}

fakedaemon::fakedaemon(QStringList itsAbilities, QStringList *writesTo)
    : seen(writesTo),
      abilities(std::move(itsAbilities)),
      bus(QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                        QString::number(quintptr(this))))
{
    bus.registerObject(path, this, QDBusConnection::ExportAllSlots);
    if (!abilities.isEmpty() && !bus.registerService(service))
        qFatal("there is another daemon");
}

fakedaemon::~fakedaemon()
{
    bus.unregisterObject(path);
    QCoreApplication::removePostedEvents(this);
    QDBusConnection::disconnectFromBus(bus.name());
}

void fakedaemon::tell(const QStringList &words)
{
    QDBusMessage message = QDBusMessage::createSignal(path, service, words[0]);
    const uint number = words[2].toUInt();
    message.setArguments({words[1].toUInt(), number > 0 ? QVariant(number) : QVariant(words[2])});
    bus.send(message);
}

QStringList fakedaemon::GetCapabilities()
{
    seen->append(u"asked"_s);
    return abilities;
}

uint fakedaemon::Notify(const QString &application, uint replaced, const QString &icon, const QString &title,
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

void fakedaemon::CloseNotification(uint id)
{
    seen->append(u"close "_s + QString::number(id));
}
