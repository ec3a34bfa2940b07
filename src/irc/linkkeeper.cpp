// SPDX-License-Identifier: MIT
#include "linkkeeper.h"

#include "linkmemory.h"

#include <QDateTime>
#include <QNetworkInformation>
#include <QRandomGenerator>
#include <QTcpSocket>

#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto maxWelcome = 30s;
constexpr auto maxLogin = 15s;
constexpr auto maxSilence = 90s;
constexpr auto maxPing = 30s;

qint64 today()
{
    return QDateTime::currentSecsSinceEpoch();
}

} // namespace

linkkeeper::linkkeeper()
{
    connect(&dial, &dialer::established, this, &linkkeeper::dialed);
    connect(&dial, &dialer::failed, this, &linkkeeper::failed);
    nextTry.callOnTimeout(this, &linkkeeper::tryNow);
    welcomeTime.callOnTimeout(this, [this] { giveUp(linkfault(linkfault::kind::noWelcome)); });
    loginTime.callOnTimeout(this, &linkkeeper::loginTimedOut);
    silence.callOnTimeout(this, [this] {
        if (std::exchange(pinged, true))
            return giveUp(linkfault(linkfault::kind::dead));
        silence.start(maxPing);
        Q_EMIT pingWanted();
    });
}

linkkeeper::~linkkeeper()
{
    stop();
}

void linkkeeper::start(const destination &wanted)
{
    if (standing)
        Q_EMIT dropWanted();
    // What a host has said of itself holds as long as we come back to it.
    const bool sameHost = to.address.host() == wanted.address.host();
    const quint16 asked = sameHost ? upgradePort : 0;
    stop();
    upgradePort = asked;
    if (!sameHost)
        nickLength = 0;
    to = wanted;
    active = true;
    watchNetwork();
    tryNow();
}

// Where the system knows whether there is a network, the next try need not wait for its time.
void linkkeeper::watchNetwork()
{
    if (watching || !QNetworkInformation::loadBackendByFeatures(QNetworkInformation::Feature::Reachability))
        return;
    watching = true;
    connect(QNetworkInformation::instance(), &QNetworkInformation::reachabilityChanged, this,
            [this](QNetworkInformation::Reachability now) {
                if (now == QNetworkInformation::Reachability::Online && nextTry.isActive())
                    tryNow();
            });
}

void linkkeeper::stop()
{
    if (standing)
        keepPolicy();
    active = false;
    standing = false;
    refused.clear();
    upgradePort = 0;
    retries.reset();
    endTry();
}

void linkkeeper::endTry()
{
    dial.cancel();
    for (countdown *c : {&nextTry, &welcomeTime, &loginTime, &silence})
        c->stop();
}

void linkkeeper::forget()
{
    stop();
    to = {};
}

bool linkkeeper::connectNow()
{
    if (!to.address.isValid())
        return false;
    const destination again = to;
    start(again);
    return true;
}

bool linkkeeper::trust()
{
    if (refused.isEmpty() || memory == nullptr)
        return false;
    if (!memory->setPin(target.host, target.port, std::exchange(refused, {})))
        Q_EMIT status(u"The certificate is trusted until Parlo ends: the settings cannot be saved"_s);
    return connectNow();
}

void linkkeeper::quitting()
{
    active = false;
    nextTry.stop();
    if (!standing)
        dial.cancel();
}

// --- one try ---

void linkkeeper::tryNow()
{
    nextTry.stop();
    lastError.clear();
    promise = {};
    target = {to.address.host(), to.port, to.address.isEncrypted(), {}, to.certificateFile};
    // A host that has asked for TLS gets it, whatever the address says.
    quint16 tlsPort = upgradePort;
    if (tlsPort == 0 && memory != nullptr)
        tlsPort = memory->policies().portFor(target.host, today());
    if (tlsPort != 0 && !target.encrypted) {
        target.port = tlsPort;
        target.encrypted = true;
    }
    if (memory != nullptr)
        target.pin = memory->pin(target.host, target.port);
    if (!isPrivate() && !to.password.isEmpty())
        return failed(linkfault(linkfault::kind::passwordNeedsTls));
    if (!to.address.account().isEmpty() && to.password.isEmpty() && to.certificateFile.isEmpty())
        return failed(linkfault(linkfault::kind::noPassword, {}, 0, to.address.account()));
    Q_EMIT status(u"Connecting to " + target.host + u'\u2026');
    dial.dial(target);
}

void linkkeeper::dialed()
{
    standing = true;
    if (dial.replacesPin()) {
        memory->setPin(target.host, target.port, {});
        Q_EMIT status(target.host + u" has a verified certificate now");
    }
    Q_EMIT status(u"Connected, logging in\u2026"_s);
    welcomeTime.start(maxWelcome);
    heard();
    Q_EMIT established();
}

void linkkeeper::failed(const linkfault &why)
{
    if (std::exchange(standing, false))
        keepPolicy();
    for (countdown *c : {&welcomeTime, &loginTime, &silence})
        c->stop();
    refused = why.mayBeTrusted() ? why.detail : QString();
    if (!why.text.isEmpty())
        Q_EMIT status(why.text);
    if (why.passes && active)
        scheduleNext();
}

void linkkeeper::keepPolicy()
{
    if (memory == nullptr || !target.encrypted)
        return;
    stspolicies known = memory->policies();
    if (promise.duration)
        known.heard(target.host, target.port, promise, today());
    else if (known.portFor(target.host, today()) != 0)
        known.linkEnded(target.host, today());
    else
        return;
    memory->setPolicies(known);
}

void linkkeeper::scheduleNext()
{
    const qint64 wait = retries.nextTry(countdown::now(), QRandomGenerator::global()->generateDouble());
    nextTry.start(std::chrono::milliseconds(wait));
    Q_EMIT status(u"Next try in %1 s"_s.arg((wait + 500) / 1000));
}

// --- the connection that stands ---

void linkkeeper::heard()
{
    pinged = false;
    silence.start(maxSilence);
}

void linkkeeper::loggingIn()
{
    if (!loginTime.isActive())
        loginTime.start(maxLogin);
}

void linkkeeper::welcomed()
{
    welcomeTime.stop();
    loginTime.stop();
    retries.registered(countdown::now());
}

void linkkeeper::errorSaid(const QString &why)
{
    lastError = why;
    retries.error(why);
}

void linkkeeper::ended()
{
    if (standing)
        failed(active ? linkfault(linkfault::kind::lost, {}, 0, lastError)
                      : linkfault(linkfault::kind::quit));
}

void linkkeeper::giveUp(const linkfault &why)
{
    // What the drop brings about is not the end of a connection that stands.
    const bool stood = std::exchange(standing, false);
    Q_EMIT dropWanted();
    endTry();
    if (stood)
        keepPolicy();
    failed(why);
}

void linkkeeper::stsOffered(const stsoffer &offer)
{
    if (!target.encrypted && offer.port != 0) {
        // For how long is said on the link with TLS alone.
        upgradePort = offer.port;
        standing = false;
        Q_EMIT dropWanted();
        endTry();
        return tryNow();
    }
    // What is said later is kept at the end: nobody makes us write a file with every line.
    const bool first = !promise.duration;
    promise = offer;
    if (first && promise.duration)
        keepPolicy();
}
