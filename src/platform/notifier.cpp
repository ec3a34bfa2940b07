// SPDX-License-Identifier: MIT
#include "notifier.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QTextBoundaryFinder>
#include <QThread>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Of our connection, within this program.
constexpr auto connectionName = "parlo-notifier"_L1;
/// The desktop file without its ending, which is the name of the icon as well.
constexpr auto desktopEntry = "chat.parlo.Parlo"_L1;
constexpr auto service = "org.freedesktop.Notifications"_L1;
constexpr auto path = "/org/freedesktop/Notifications"_L1;
constexpr auto busService = "org.freedesktop.DBus"_L1;

/// In characters.
constexpr qsizetype maxTitle = 80;
constexpr qsizetype maxBody = 200;
/// As long as the daemon decides.
constexpr int expiry = -1;

/// The address of the session bus, empty if there is none. The library would start one otherwise, or wait for it.
QString busAddress()
{
    const QString told = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/bus";
    return told.isEmpty() && QFileInfo::exists(socket) ? u"unix:path="_s + socket : told;
}

bool turnsText(QChar c)
{
    return QStringView(u"\u061c\u200e\u200f\u202a\u202b\u202c\u202d\u202e\u2066\u2067\u2068\u2069")
        .contains(c);
}

/// `text` in one line, at most `most` characters long, cut between two letters.
QString inShort(const QString &text, qsizetype most)
{
    QString line;
    for (const QChar c : text) {
        if (line.size() > most)
            break;
        const QChar::Category kind = c.category();
        if (c.isSpace())
            line += u' ';
        else if (kind != QChar::Other_Control && !turnsText(c))
            line += c;
    }
    if (line.size() <= most)
        return line;
    QTextBoundaryFinder letters(QTextBoundaryFinder::Grapheme, line);
    letters.setPosition(most);
    const qsizetype end = letters.isAtBoundary() ? most : letters.toPreviousBoundary();
    // A letter may be longer than all of it. Then only a pair of surrogates stays together.
    return line.first(end > 0 ? end : most - (line[most].isLowSurrogate() ? 1 : 0)) + u'…';
}

QDBusMessage callOf(const QString &method, const QString &of = service)
{
    return QDBusMessage::createMethodCall(of, path, service, method);
}

bool isAnswer(const QDBusMessage &message, const QString &signature)
{
    return message.type() == QDBusMessage::ReplyMessage && message.signature() == signature;
}

} // namespace

notifier::notifier(QObject *parent) : QObject(parent), bus(QString{}) {}

notifier::~notifier()
{
    if (connecting)
        connecting->wait();
    for (const note &shown : std::as_const(notes))
        close(shown.id);
    // Even this would start the library's thread.
    if (connecting || !bus.name().isEmpty())
        QDBusConnection::disconnectFromBus(connectionName);
}

void notifier::notify(const QString &key, const QString &title, const QString &body)
{
    note &changed = notes[key];
    changed.title = inShort(title, maxTitle);
    changed.body = inShort(body, maxBody);
    changed.isNew = true;
    changed.isWithdrawn = false;
    advance();
}

void notifier::withdraw(const QString &key)
{
    const auto found = notes.find(key);
    if (found == notes.end())
        return;
    if (found->isSent) {
        found->isNew = false;
        found->isWithdrawn = true;
        return;
    }
    close(found->id);
    notes.erase(found);
}

void notifier::advance()
{
    if (std::ranges::none_of(notes, &note::isNew))
        return;
    if (reached == stage::apart) {
        reached = stage::asking;
        if (bus.isConnected())
            ask();
        else
            connectToBus();
    } else if (reached == stage::ready) {
        for (auto each = notes.begin(); each != notes.end(); ++each) {
            if (each->isNew && !each->isSent)
                send(each.key(), &*each);
        }
    }
}

// The library waits for the bus, up to 25 s.
void notifier::connectToBus()
{
    const QString address = busAddress();
    if (address.isEmpty()) {
        changeDaemon({});
        giveUp();
        return;
    }
    connecting = QThread::create([address] {
        QDBusConnection::disconnectFromBus(connectionName);
        QDBusConnection::connectToBus(address, connectionName);
    });
    connecting->setParent(this);
    connect(connecting, &QThread::finished, this, &notifier::listen);
    connecting->start();
}

void notifier::listen()
{
    connecting->deleteLater();
    bus = QDBusConnection(connectionName);
    changeDaemon({});
    if (!bus.isConnected()) {
        giveUp();
        return;
    }
    // With a sender, each of these would wait for the bus to say who that is.
    bus.connect({}, {}, busService, u"NameOwnerChanged"_s, {service}, {}, this,
                SLOT(takeOwner(QDBusMessage)));
    bus.connect({}, path, service, u"ActivationToken"_s, this, SLOT(takeToken(QDBusMessage)));
    bus.connect({}, path, service, u"ActionInvoked"_s, this, SLOT(takeClick(QDBusMessage)));
    bus.connect({}, path, service, u"NotificationClosed"_s, this, SLOT(takeEnd(QDBusMessage)));
    ask();
}

void notifier::ask()
{
    auto *const answer = new QDBusPendingCallWatcher(bus.asyncCall(callOf(u"GetCapabilities"_s)), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        takeAnswer(answer->reply());
    });
}

void notifier::takeAnswer(const QDBusMessage &answer)
{
    if (!isAnswer(answer, u"as"_s)) {
        giveUp();
        return;
    }
    const QStringList abilities = answer.arguments().constFirst().toStringList();
    readsMarkup = abilities.contains(u"body-markup");
    takesClicks = abilities.contains(u"actions");
    if (answer.service() != daemon)
        changeDaemon(answer.service());
    reached = stage::ready;
    advance();
}

void notifier::send(const QString &key, note *sent)
{
    sent->isNew = false;
    sent->isSent = true;
    // Some daemons show a dialog when there are actions that they cannot take.
    QStringList actions;
    if (takesClicks)
        actions << u"default"_s << tr("Show");
    const QVariantMap hints{{u"category"_s, u"im.received"_s}, {u"desktop-entry"_s, QString(desktopEntry)}};
    // The next daemon may read markup, or have given this id to others.
    QDBusMessage call = callOf(u"Notify"_s, daemon);
    call.setArguments({u"Parlo"_s, sent->id, QString(desktopEntry), sent->title,
                       readsMarkup ? sent->body.toHtmlEscaped() : sent->body, actions, hints, expiry});
    auto *const answer = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, key, asked = daemon] {
        answer->deleteLater();
        takeId(key, asked, answer->reply());
    });
}

void notifier::takeId(const QString &key, const QString &asked, const QDBusMessage &answer)
{
    const auto found = notes.find(key);
    if (found == notes.end())
        return;
    found->isSent = false;
    const bool isTaken = isAnswer(answer, u"u"_s);
    if (isTaken && asked == daemon)
        found->id = answer.arguments().constFirst().toUInt();
    else if (!isTaken && asked != daemon)
        found->isNew = true;
    if (found->isWithdrawn)
        close(found->id);
    if (found->isWithdrawn || (found->id == 0 && !found->isNew))
        notes.erase(found);
    // What has come meanwhile may find a daemon that works.
    if (!isTaken && reached == stage::ready)
        reached = stage::apart;
    advance();
}

void notifier::close(uint id)
{
    if (id == 0)
        return;
    QDBusMessage call = callOf(u"CloseNotification"_s, daemon);
    call.setArguments({id});
    bus.send(call);
}

void notifier::giveUp()
{
    reached = stage::apart;
    notes.removeIf([](notetable::iterator each) {
        each->isNew = false;
        return each->id == 0 && !each->isSent;
    });
}

void notifier::changeDaemon(const QString &name)
{
    daemon = name;
    for (note &shown : notes)
        shown.id = 0;
    notes.removeIf([](notetable::iterator each) { return !each->isNew && !each->isSent; });
}

notifier::notetable::iterator notifier::noteOf(const QDBusMessage &message, const QString &signature)
{
    if (daemon.isEmpty() || message.service() != daemon || message.signature() != signature)
        return notes.end();
    const uint id = message.arguments().constFirst().toUInt();
    return std::find_if(notes.begin(), notes.end(), [id](const note &n) { return n.id != 0 && n.id == id; });
}

void notifier::takeOwner(const QDBusMessage &message)
{
    if (message.service() != busService || message.signature() != u"sss")
        return;
    changeDaemon(message.arguments().constLast().toString());
    if (reached == stage::ready)
        reached = stage::apart;
}

void notifier::takeToken(const QDBusMessage &message)
{
    if (noteOf(message, u"us"_s) != notes.end())
        qputenv("XDG_ACTIVATION_TOKEN", message.arguments().constLast().toString().toUtf8());
}

void notifier::takeClick(const QDBusMessage &message)
{
    const auto found = noteOf(message, u"us"_s);
    // The receiver may withdraw it, and with it the key.
    if (found != notes.end() && message.arguments().constLast() == u"default"_s)
        Q_EMIT activated(QString(found.key()));
}

void notifier::takeEnd(const QDBusMessage &message)
{
    const auto found = noteOf(message, u"uu"_s);
    if (found == notes.end())
        return;
    found->id = 0;
    if (!found->isNew && !found->isSent)
        notes.erase(found);
}
