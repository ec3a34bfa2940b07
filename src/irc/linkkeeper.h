// SPDX-License-Identifier: MIT
#pragma once

#include "countdown.h"
#include "destination.h"
#include "dialer.h"
#include "retryclock.h"
#include "stspolicy.h"

class linkmemory;

/// Keeps the connection of a session by address: when to try, how long to wait for what, and when to try again.
///
/// It sees no line. Whoever reads them says what has come; for the rest it has a clock.
class linkkeeper : public QObject
{
    Q_OBJECT

public:
    linkkeeper();
    /// Remembers what the host has promised of TLS: a link that stands ends now.
    ~linkkeeper() override;

    /// Connects to `to` from now on, until stop().
    void start(const destination &to);
    /// The user wants no connection, or another one.
    void stop();
    /// The same, and there is no place to come back to.
    void forget();
    /// Connects now to where it was, if there is such a place. False if not.
    bool connectNow();
    /// Takes the certificate that was refused last as this server's from now on, and connects. False if there was none.
    bool trust();

    /// Whether there is a session by address, connected or not.
    bool isActive() const { return active; }
    bool isEncrypted() const { return target.encrypted; }
    /// Whether nobody on the way can read what we send: over TLS, or to this machine itself.
    bool isPrivate() const { return target.encrypted || to.address.isLoopback(); }
    const destination &where() const { return to; }
    /// The length of nicks that this host has told in an earlier connection, or 0.
    int maxNick() const { return nickLength; }
    void setMaxNick(int length) { nickLength = length; }
    /// The connection that established() has announced.
    std::unique_ptr<QTcpSocket> take() { return dial.take(); }

    // What has come on the connection.
    void heard();
    /// The server waits for the login service.
    void loggingIn();
    void loggedIn() { loginTime.stop(); }
    void welcomed();
    /// An ERROR line, which is the server's last.
    void errorSaid(const QString &why);
    /// The connection has ended, by whomever.
    void ended();
    /// The server speaks of strict transport security (IRCv3, sts).
    void stsOffered(const stsoffer &offer);

    /// Ends the try or the connection for this reason.
    void giveUp(const linkfault &why);
    /// The user wants no connection any more. One that stands is ended by the server, which has been asked to.
    void quitting();

    /// Must outlive this. May be null: then nothing is remembered.
    linkmemory *memory = nullptr;

Q_SIGNALS:
    /// The connection stands, and waits to be taken.
    void established();
    /// A text for the user.
    void status(const QString &text);
    /// The server should show that it is alive.
    void pingWanted();
    /// The connection is to be dropped, in silence.
    void dropWanted();
    /// No answer came to our login.
    void loginTimedOut();

private:
    void watchNetwork();
    /// Stops what waits and what is tried.
    void endTry();
    void tryNow();
    void dialed();
    void failed(const linkfault &why);
    void scheduleNext();
    /// Remembers what the host wants of TLS. It counts from now.
    void keepPolicy();

    destination to;
    dialtarget target;
    dialer dial;
    retryclock retries;
    bool active = false;
    /// Whether the system's network is watched.
    bool watching = false;
    /// Whether a connection stands.
    bool standing = false;
    /// The port at which the host wants TLS, said on a plain link of this session; 0 when it has not said so.
    quint16 upgradePort = 0;
    /// What the host has said last on this link about coming with TLS.
    stsoffer promise;
    QString lastError;
    int nickLength = 0;
    /// The fingerprint that trust() would take.
    QString refused;
    countdown nextTry;
    countdown welcomeTime;
    countdown loginTime;
    countdown silence;
    bool pinged = false;
};
