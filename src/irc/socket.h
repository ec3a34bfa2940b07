// SPDX-License-Identifier: MIT
#pragma once

#include "linecodec.h"

#include <QTcpSocket>

#include <memory>

/// The connection to the server as a stream of text lines: it makes a plain one itself, and takes over any other once it
/// stands.
///
/// The C library has a function of this name: where its header is in sight, say `class socket`.
class socket : public QObject
{
    Q_OBJECT

public:
    /// In bytes, the longest line: about eight times what tags and text come to together (IRCv3 message tags).
    static constexpr qint64 maxLine = 64LL * 1024;

    socket();
    ~socket() override;

    /// Connects, again if need be: an earlier connection ends at once and in silence, and what it had sent but was not yet
    /// read is gone.
    void connectToHost(const QString &host, quint16 port);
    /// Takes over a connection that stands, in place of an earlier one; connected() comes before this returns.
    void adopt(std::unique_ptr<QTcpSocket> established);
    /// Drops the connection in silence.
    void drop();
    /// Ends the connection at once; what is not read yet is gone. disconnected() follows if it stood.
    void abort() { device->abort(); }
    /// Forgets what is not read yet of a connection that has ended.
    void close() { device->close(); }

    QAbstractSocket::SocketState state() const { return device->state(); }
    /// In bytes, what waits for the server to take it.
    qint64 unsent() const;
    bool canReadLine() const { return device->canReadLine(); }
    /// The next whole line, with its line end, decoded. Null, after lineTooLong(), if it is longer than a line may be.
    QString takeLine();
    /// Writes one protocol line: `line` without its line end, encoded, then CR LF. Whether we are connected is not checked.
    void sendLine(const QString &line);

    /// How lines are decoded and encoded.
    linecodec codec = linecodec::latin1;

Q_SIGNALS:
    void connected();
    void disconnected();
    /// There is an error, such as that the server cannot be reached.
    void failed(QAbstractSocket::SocketError error);
    /// Bytes have arrived.
    void heard();
    /// One whole line or more can be read. Comes once for each arrival of bytes: read them all.
    void readyLine();
    /// A line is longer than `maxLine`; its end may not have arrived yet.
    void lineTooLong();

public Q_SLOTS:
    void dataReady();

private:
    /// Uses `next` from now on. What was in use may be deep in a signal that has brought us here.
    void use(std::unique_ptr<QTcpSocket> next);

    /// Never null.
    std::unique_ptr<QTcpSocket> device;
};
