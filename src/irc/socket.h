// SPDX-License-Identifier: MIT
#pragma once

#include <QTcpSocket>

/// The TCP connection to the server as a stream of Latin-1 text lines.
///
/// The C library has a function of this name: where its header is included, write `class socket`.
class socket : public QTcpSocket
{
    Q_OBJECT

public:
    socket();
    ~socket() override;

    /// The maximum length of a line in bytes: about eight times that of a line with tags (IRCv3 message
    /// tags).
    static constexpr qint64 maxLine = 64LL * 1024;

    /// Connects, also while connected: the earlier connection ends at once and without a signal, and its
    /// unread data is lost. (QAbstractSocket itself would warn and do nothing.)
    void connectToHost(const QString &host, quint16 port, OpenMode mode = ReadWrite,
                       NetworkLayerProtocol protocol = AnyIPProtocol) override;

    /// Writes one protocol line: `line` without its line end, as Latin-1, then CR LF. Characters outside of
    /// Latin-1 become "?". Does not check whether we are connected.
    void sendLine(const QString &line);
    /// The next complete line, with its line end, decoded from Latin-1. If it is longer than `maxLine`, emits
    /// lineTooLong() and returns a null string.
    QString takeLine();

Q_SIGNALS:
    /// At least one complete line can be read. Emitted once when data arrives: read all lines then.
    void readyLine();
    /// A line is longer than `maxLine`; its end may not have arrived yet.
    void lineTooLong();

public Q_SLOTS:
    void dataReady();

private:
    void drop();
};
