// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QHash>
#include <QObject>
#include <QPointer>

class QDBusMessage;
class QThread;

/// Desktop notifications (org.freedesktop.Notifications 1.2, on the session bus).
///
/// Each key, such as the name of a tab, has one notification at most. Nothing is asked before the first one. No call waits.
/// Without a bus or a daemon nothing happens, and the next notification tries again.
class notifier : public QObject
{
    Q_OBJECT

public:
    explicit notifier(QObject *parent = nullptr);
    /// Takes all notifications away. Waits for a connection to the bus that is still being made.
    ~notifier() override;

    /// Shows a notification, in the place of the last one with this `key`. Both texts are plain, and may be a stranger's
    /// and of any length: they are cut, line breaks become spaces, and control characters and those that turn the
    /// direction of text are left out.
    void notify(const QString &key, const QString &title, const QString &body);
    /// Takes it away, such as when the user has seen the tab.
    void withdraw(const QString &key);

Q_SIGNALS:
    /// The user clicked the notification. If the daemon gave a token with which a window may come to the front, the
    /// environment has it (XDG_ACTIVATION_TOKEN).
    void activated(const QString &key);

private Q_SLOTS:
    // The bus knows slots by their names alone.
    void takeOwner(const QDBusMessage &message);
    void takeToken(const QDBusMessage &message);
    void takeClick(const QDBusMessage &message);
    void takeEnd(const QDBusMessage &message);

private:
    enum class stage {
        /// There is no daemon that we know of.
        apart,
        /// The connection to the bus, or the daemon's answer, is on its way.
        asking,
        ready,
    };

    struct note
    {
        QString title;
        QString body;
        /// The daemon's number for it; 0 if it shows none.
        uint id = 0;
        /// The texts are not sent yet.
        bool isNew = false;
        /// An answer with the id is on its way. Until then, newer texts wait.
        bool isSent = false;
        /// To be closed when the answer comes.
        bool isWithdrawn = false;
    };
    using notetable = QHash<QString, note>;

    /// Sends what can be sent now, or takes the next step to that.
    void advance();
    void connectToBus();
    void listen();
    void ask();
    void takeAnswer(const QDBusMessage &answer);
    void send(const QString &key, note *sent);
    /// With the daemon that was asked.
    void takeId(const QString &key, const QString &asked, const QDBusMessage &answer);
    void close(uint id);
    /// Drops what waits. The next notification begins anew.
    void giveUp();
    /// Another daemon, or none, has the name on the bus.
    void changeDaemon(const QString &name);
    /// What a signal of the daemon is about; the end if that is none of ours.
    notetable::iterator noteOf(const QDBusMessage &message, const QString &signature);

    stage reached = stage::apart;
    notetable notes;
    QDBusConnection bus;
    /// The daemon's own name on the bus. Its ids are worth nothing to another one.
    QString daemon;
    bool readsMarkup = false;
    bool takesClicks = false;
    /// Connecting to a bus waits for its answer.
    QPointer<QThread> connecting;
};
