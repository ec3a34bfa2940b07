// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QProcess>
#include <QStringList>

#include <functional>

/// A message bus of the test's own.
class fakebus
{
public:
    ~fakebus();

    /// Its address; empty if it does not start.
    QByteArray start();

private:
    QProcess dbus;
};

/// A notification daemon on the session bus. It writes down what it is asked for.
class fakedaemon : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    /// It can do this; without `itsAbilities` it only pretends to be the daemon.
    fakedaemon(QStringList itsAbilities, QStringList *writesTo);
    ~fakedaemon() override;

    /// The name of a signal, an id, and a text or a number.
    void tell(const QStringList &words);

    bool refuses = false;
    /// Happens while it is asked to show something, before it answers.
    std::function<void()> meanwhile = [] {};

public Q_SLOTS:
    // NOLINTBEGIN(readability-identifier-naming): the bus knows them by these names
    QStringList GetCapabilities();
    uint Notify(const QString &application, uint replaced, const QString &icon, const QString &title,
                const QString &body, const QStringList &actions, const QVariantMap &hints, int expiry);
    void CloseNotification(uint id);
    // NOLINTEND(readability-identifier-naming)

private:
    QStringList *seen;
    QStringList abilities;
    QDBusConnection bus;
    uint lastId = 40;
};
