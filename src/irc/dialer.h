// SPDX-License-Identifier: MIT
#pragma once

#include "countdown.h"
#include "linkfault.h"

#include <QHostAddress>
#include <QHostInfo>
#include <QObject>

#include <memory>

class QSslError;
class QSslSocket;
class QTcpSocket;

/// Where a connection goes, and what it needs.
struct dialtarget
{
    QString host;
    quint16 port = 0;
    bool encrypted = false;
    /// The fingerprint of the one certificate that the user trusts there; empty where the authorities decide.
    QString pin;
    /// A PEM file with key and certificate to log in with; may be empty.
    QString certificateFile;
};

/// One try to get a connection: looks the host up, asks its addresses one after the other, and agrees on TLS where the
/// target says so.
///
/// Each address gets a socket of its own: what a QSslSocket was told of one host would hold for the next.
class dialer : public QObject
{
    Q_OBJECT

public:
    dialer();
    ~dialer() override;

    /// Begins a try; one that is under way is forgotten.
    void dial(const dialtarget &target);
    void cancel();
    /// Whether the authorities vouch for the certificate of the connection, so that the pin is not needed any more.
    bool replacesPin() const { return pinReplaced; }

Q_SIGNALS:
    /// The connection stands, and nothing was sent on it yet. The receiver takes it with take().
    void established();
    void failed(const linkfault &fault);

public:
    /// The connection, from then on the caller's. Null unless one was established.
    std::unique_ptr<QTcpSocket> take();

private:
    void lookedUp(const QHostInfo &info);
    void tryNext();
    std::unique_ptr<QTcpSocket> newPlainSocket();
    std::unique_ptr<QTcpSocket> newTlsSocket();
    /// Gives `tls` the certificate of the target's file; false if that cannot be used.
    bool addCertificate(QSslSocket *tls) const;
    void judge(QSslSocket *tls, const QList<QSslError> &errors);
    void attemptFailed();
    void done();
    void fail(linkfault::kind what, const QString &detail = {});
    void fail(const linkfault &why);
    /// What the error of the socket means for the user.
    linkfault::kind kindOfError() const;

    dialtarget target;
    QList<QHostAddress> addresses;
    std::unique_ptr<QTcpSocket> socket;
    int lookup = -1;
    /// The whole try, and one address of it.
    countdown deadline;
    countdown patience;
    bool pinReplaced = false;
    /// Of this try, where the certificate is the reason.
    linkfault certificateFault;
};
