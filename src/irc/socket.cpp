// SPDX-License-Identifier: MIT
#include "irc/socket.h"

#include <QSignalBlocker>

namespace {

/// So much, in bytes, comes from the operating system in one turn of the event loop, however much waits
/// there: some 1,000 lines, which take about 10 ms. The window stays alive when a server sends as fast as it
/// can.
constexpr qint64 bytesPerTurn = 128 * 1024;

} // namespace

socket::socket()
{
    static_assert(bytesPerTurn > longestLine, "a line that is waited for must fit");
    setReadBufferSize(bytesPerTurn);
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
    if (bytesAvailable() > longestLine && !canReadLine())
        Q_EMIT lineTooLong();
}

void socket::drop()
{
    const QSignalBlocker silence(this);
    abort();
}
