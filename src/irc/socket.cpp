// SPDX-License-Identifier: MIT
#include "socket.h"

#include "lineend.h"

#include <QSignalBlocker>

namespace {

/// In bytes: the maximum of unread data in our buffer. TCP keeps the rest at the server.
constexpr qint64 maxBuffered = 512LL * 1024;

} // namespace

socket::socket()
{
    setReadBufferSize(maxBuffered);
    connect(this, &QTcpSocket::readyRead, this, &socket::dataReady);
}

socket::~socket()
{
    drop();
}

void socket::connectToHost(const QString &host, quint16 port, OpenMode mode, NetworkLayerProtocol protocol)
{
    drop();
    QTcpSocket::connectToHost(host, port, mode, protocol);
}

void socket::sendLine(const QString &line)
{
    write(withoutLineEnd(line).toLatin1() + "\r\n");
}

QString socket::takeLine()
{
    const QByteArray line = readLine();
    if (line.size() > maxLine)
        Q_EMIT lineTooLong();
    return line.size() > maxLine ? QString() : QString::fromLatin1(line);
}

void socket::dataReady()
{
    if (canReadLine())
        Q_EMIT readyLine();
    if (bytesAvailable() > maxLine && !canReadLine())
        Q_EMIT lineTooLong();
}

void socket::drop()
{
    const QSignalBlocker silence(this);
    abort();
}
