// SPDX-License-Identifier: MIT
#pragma once

#include <QTcpSocket>

/// The TCP connection to the server as a stream of Latin-1 text lines.
///
/// The C library has a function of this name: where its header is in sight, say `class socket`.
class socket : public QTcpSocket
{
    Q_OBJECT

public:
    socket();
    ~socket() override;

    /// In bytes, the longest line: about eight times what tags and text come to together (IRCv3 message tags).
    static constexpr qint64 maxLine = 64LL * 1024;

    /// Connects, again if need be: an earlier connection ends at once and in silence, and what it had sent
    /// but was not yet read is gone. (QAbstractSocket itself would warn and do nothing.)
    void connectToHost(const QString &host, quint16 port, OpenMode mode = ReadWrite,
                       NetworkLayerProtocol protocol = AnyIPProtocol) override;

    /// Writes one protocol line: `line` without its line end, as Latin-1, then CR LF. What Latin-1 does not have becomes
    /// "?". Whether we are connected is not checked.
    void sendLine(const QString &line);
    /// The next whole line, with its line end, decoded from Latin-1. Null, after lineTooLong(), if it is longer than a line
    /// may be.
    QString takeLine();

Q_SIGNALS:
    /// One whole line or more can be read. Comes once for each arrival of bytes: read them all.
    void readyLine();
    /// What has come holds more than a line may, and no line feed.
    void lineTooLong();

public Q_SLOTS:
    void dataReady();

private:
    void drop();
};
