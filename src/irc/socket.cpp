// SPDX-License-Identifier: MIT
#include "socket.h"

#include "lineend.h"

#include <QSslSocket>

namespace {

/// In bytes: the maximum of unread data in our buffer. TCP keeps the rest at the server.
constexpr qint64 maxBuffered = 512LL * 1024;

} // namespace

socket::socket()
{
    use(std::make_unique<QTcpSocket>());
}

socket::~socket()
{
    device->disconnect(this);
}

void socket::use(std::unique_ptr<QTcpSocket> next)
{
    if (device != nullptr) {
        device->disconnect(this);
        device->abort();
        device.release()->deleteLater();
    }
    device = std::move(next);
    device->setReadBufferSize(maxBuffered);
    connect(device.get(), &QTcpSocket::connected, this, &socket::connected);
    connect(device.get(), &QTcpSocket::disconnected, this, &socket::disconnected);
    connect(device.get(), &QTcpSocket::errorOccurred, this, &socket::failed);
    connect(device.get(), &QTcpSocket::readyRead, this, &socket::dataReady);
}

void socket::connectToHost(const QString &host, quint16 port)
{
    drop();
    device->connectToHost(host, port);
}

void socket::adopt(std::unique_ptr<QTcpSocket> established)
{
    use(std::move(established));
    Q_EMIT connected();
    // What came with the last bytes of the handshake has been announced already.
    if (device->bytesAvailable() > 0)
        dataReady();
}

void socket::drop()
{
    use(std::make_unique<QTcpSocket>());
}

qint64 socket::unsent() const
{
    const auto *tls = qobject_cast<const QSslSocket *>(device.get());
    return device->bytesToWrite() + (tls == nullptr ? 0 : tls->encryptedBytesToWrite());
}

void socket::sendLine(const QString &line)
{
    device->write(codec.bytes(withoutLineEnd(line)) + "\r\n");
}

QString socket::takeLine()
{
    const QByteArray line = device->readLine();
    if (line.size() > maxLine)
        Q_EMIT lineTooLong();
    return line.size() > maxLine ? QString() : codec.text(line);
}

void socket::dataReady()
{
    Q_EMIT heard();
    if (device->canReadLine())
        Q_EMIT readyLine();
    if (device->bytesAvailable() > maxLine && !device->canReadLine())
        Q_EMIT lineTooLong();
}
