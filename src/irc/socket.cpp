// SPDX-License-Identifier: MIT
#include "socket.h"

#include <QSignalBlocker>

namespace {

/// So much, in bytes, waits here for its reader at most; the rest waits at the server.
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

void socket::sendLine(QString line)
{
    while (line.endsWith(u'\n') || line.endsWith(u'\r'))
        line.chop(1);
    write(line.toLatin1() + "\r\n");
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
