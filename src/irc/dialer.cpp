// SPDX-License-Identifier: MIT
#include "dialer.h"

#include "certificatecheck.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslError>
#include <QSslKey>
#include <QSslSocket>

#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Until the connection is encrypted: a server without TLS on that port says nothing, for ever.
constexpr auto tryTime = 20s;
/// For one address, while there are others: one that does not answer must not use up the time of all.
constexpr auto addressTime = 5s;

QString fingerprintOf(const QSslCertificate &certificate)
{
    return certificatecheck::fingerprintOf(certificate.digest(QCryptographicHash::Sha256));
}

} // namespace

dialer::dialer()
{
    deadline.callOnTimeout(this, [this] {
        const bool reached = socket != nullptr && socket->state() == QAbstractSocket::ConnectedState;
        fail(reached ? linkfault::kind::noTls : linkfault::kind::noAnswer);
    });
    patience.callOnTimeout(this, &dialer::tryNext);
}

dialer::~dialer()
{
    cancel();
}

void dialer::cancel()
{
    deadline.stop();
    patience.stop();
    if (lookup >= 0)
        QHostInfo::abortHostLookup(std::exchange(lookup, -1));
    // It may be one of its own signals that has brought us here.
    if (socket != nullptr) {
        socket->disconnect(this);
        socket.release()->deleteLater();
    }
}

void dialer::dial(const dialtarget &wanted)
{
    cancel();
    target = wanted;
    addresses.clear();
    pinReplaced = false;
    certificateFault = {};
    deadline.start(tryTime);
    if (target.encrypted && !QSslSocket::supportsSsl())
        return fail(linkfault::kind::noTlsInQt);
    // To look up a number would ask for its name, which nobody needs and may take long.
    if (const QHostAddress literal(target.host); !literal.isNull()) {
        addresses = {literal};
        return tryNext();
    }
    lookup = QHostInfo::lookupHost(target.host, this, &dialer::lookedUp);
}

void dialer::lookedUp(const QHostInfo &info)
{
    lookup = -1;
    addresses = info.addresses();
    if (addresses.isEmpty())
        return fail(linkfault::kind::noHost);
    tryNext();
}

void dialer::tryNext()
{
    patience.stop();
    if (socket != nullptr) {
        socket->disconnect(this);
        socket.release()->deleteLater();
    }
    const QHostAddress address = addresses.takeFirst();
    socket = target.encrypted ? newTlsSocket() : newPlainSocket();
    if (socket == nullptr)
        return fail(linkfault::kind::badCertificateFile, target.certificateFile);
    connect(socket.get(), &QTcpSocket::errorOccurred, this, &dialer::attemptFailed);
    if (!addresses.isEmpty())
        patience.start(addressTime);
    // Whoever answers is given the time that is left.
    connect(socket.get(), &QTcpSocket::connected, &patience, &countdown::stop);
    if (auto *tls = qobject_cast<QSslSocket *>(socket.get()))
        tls->connectToHostEncrypted(address.toString(), target.port, target.host);
    else
        socket->connectToHost(address, target.port);
}

std::unique_ptr<QTcpSocket> dialer::newPlainSocket()
{
    auto plain = std::make_unique<QTcpSocket>();
    connect(plain.get(), &QTcpSocket::connected, this, &dialer::done);
    return plain;
}

std::unique_ptr<QTcpSocket> dialer::newTlsSocket()
{
    auto tls = std::make_unique<QSslSocket>();
    tls->setProtocol(QSsl::TlsV1_2OrLater);
    tls->setPeerVerifyMode(QSslSocket::VerifyPeer);
    if (!target.certificateFile.isEmpty() && !addCertificate(tls.get()))
        return nullptr;
    connect(tls.get(), &QSslSocket::encrypted, this, &dialer::done);
    connect(tls.get(), &QSslSocket::sslErrors, this,
            [this, made = tls.get()](const QList<QSslError> &errors) { judge(made, errors); });
    return tls;
}

bool dialer::addCertificate(QSslSocket *tls) const
{
    QFile file(target.certificateFile);
    constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    // To open a FIFO would wait for its other end.
    if (!QFileInfo(file).isFile() || (file.permissions() & others) != 0 || !file.open(QFile::ReadOnly))
        return false;
    const QByteArray pem = file.readAll();
    const QList<QSslCertificate> chain = QSslCertificate::fromData(pem);
    QSslKey key(pem, QSsl::Rsa);
    if (key.isNull())
        key = QSslKey(pem, QSsl::Ec);
    if (chain.isEmpty() || key.isNull())
        return false;
    tls->setLocalCertificateChain(chain);
    tls->setPrivateKey(key);
    return true;
}

// Qt ends the try unless all errors are ignored; nothing of ours is sent before encrypted().
void dialer::judge(QSslSocket *tls, const QList<QSslError> &errors)
{
    const certificatecheck check(errors, fingerprintOf(tls->peerCertificate()), target.pin);
    certificateFault = check.fault();
    if (check.isAccepted())
        tls->ignoreSslErrors(errors);
}

linkfault::kind dialer::kindOfError() const
{
    switch (socket->error()) {
    case QAbstractSocket::SslHandshakeFailedError:
        return socket->errorString().contains("protocol version"_L1) ||
                       socket->errorString().contains("unsupported protocol"_L1)
                   ? linkfault::kind::outdatedTls
                   : linkfault::kind::noTls;
    case QAbstractSocket::SslInvalidUserDataError:
        return linkfault::kind::badCertificateFile;
    case QAbstractSocket::SslInternalError:
    case QAbstractSocket::RemoteHostClosedError:
        return linkfault::kind::noTls;
    default:
        return linkfault::kindOf(socket->error());
    }
}

void dialer::attemptFailed()
{
    if (certificateFault.what != linkfault::kind::none)
        return fail(certificateFault);
    const linkfault::kind what = kindOfError();
    const bool answered = what != linkfault::kind::refused && what != linkfault::kind::noAnswer;
    if (!answered && !addresses.isEmpty())
        return tryNext();
    fail(what, what == linkfault::kind::badCertificateFile ? target.certificateFile : QString());
}

void dialer::done()
{
    deadline.stop();
    patience.stop();
    socket->disconnect(this);
    if (const auto *tls = qobject_cast<const QSslSocket *>(socket.get())) {
        const QString seen = fingerprintOf(tls->peerCertificate());
        pinReplaced = certificatecheck(tls->sslHandshakeErrors(), seen, target.pin).replacesPin();
    }
    Q_EMIT established();
}

std::unique_ptr<QTcpSocket> dialer::take()
{
    return std::move(socket);
}

void dialer::fail(linkfault::kind what, const QString &detail)
{
    fail(linkfault(what, target.host, target.port, detail));
}

void dialer::fail(const linkfault &why)
{
    cancel();
    Q_EMIT failed(why);
}
