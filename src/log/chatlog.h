// SPDX-License-Identifier: MIT
#pragma once

#include "logline.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>

#include <utility>

/// What was said, kept in files that only the user can read: DATA/parlo/NETWORK/NAME.log.
///
/// A network, such as a host, and a name may be any text, see logname(). Lines are collected for a second, or until they are
/// 64 KiB, and written in one piece. Lines that cannot be written are lost. That is told once; the next lines are tried
/// again.
class chatlog : public QObject
{
    Q_OBJECT

public:
    /// So many lines of its log a new tab begins with.
    static constexpr int linesShown = 50;

    /// Touches no file. `dataFolder` is where the user's programs have theirs; if it is empty, that of the system:
    /// $XDG_DATA_HOME, or ~/.local/share.
    explicit chatlog(const QString &dataFolder = {}, QObject *parent = nullptr);
    ~chatlog() override;

    /// Adds a line, as it is shown, to the log of `name`, whose letters are folded (see folded()).
    void append(const QString &network, const QString &name, const QString &text,
                const QDateTime &time = QDateTime::currentDateTime());
    /// The last lines of a log, at most `count` and at most 64 KiB; the oldest is the first.
    QList<logline> tail(const QString &network, const QString &name, int count = linesShown);
    /// Writes what was collected.
    void flush();

    /// The folder of all logs, which may not exist yet.
    QString folder() const;

Q_SIGNALS:
    /// Lines were lost; `why` is for people. Comes once.
    void failed(const QString &why);

private:
    QString data;
    /// The lines that wait, by the file's folder and name.
    QHash<std::pair<QString, QString>, QByteArray> waiting;
    qsizetype waitingBytes = 0;
    QTimer timer;
    bool isTold = false;
    /// What the last line began with, for lines of the same second: to make it takes longer than all else.
    QByteArray stamp;
    QDateTime stamped;
};
