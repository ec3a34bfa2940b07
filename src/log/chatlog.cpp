// SPDX-License-Identifier: MIT
#include "chatlog.h"

#include "logfile.h"
#include "logname.h"

#include <QStandardPaths>

#include <utility>

namespace {

/// So long lines wait for others, and so many bytes do.
constexpr int waitMilliseconds = 1000;
constexpr qsizetype maxWaiting = qsizetype{64} * 1024;

constexpr qint64 maxTail = qint64{64} * 1024;

/// Asks for no time zone, as the comparison of two QDateTime does.
bool isSameSecond(const QDateTime &a, const QDateTime &b)
{
    constexpr int second = 1000;
    return a.date() == b.date() &&
           a.time().msecsSinceStartOfDay() / second == b.time().msecsSinceStartOfDay() / second;
}

} // namespace

chatlog::chatlog(const QString &dataFolder, QObject *parent)
    : QObject(parent),
      data(dataFolder.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
                                : dataFolder)
{
    timer.setSingleShot(true);
    timer.setInterval(waitMilliseconds);
    connect(&timer, &QTimer::timeout, this, &chatlog::flush);
}

chatlog::~chatlog()
{
    isTold = true;
    flush();
}

void chatlog::append(const QString &network, const QString &name, const QString &text, const QDateTime &time)
{
    const QDateTime local = time.toLocalTime();
    if (!isSameSecond(local, stamped)) {
        stamp = logline::stampOf(local);
        stamped = local;
    }
    const QByteArray line = logline::written(stamp, text);
    waiting[{logname(network), logname(name)}] += line;
    waitingBytes += line.size();
    if (waitingBytes > maxWaiting)
        flush();
    else if (!timer.isActive())
        timer.start();
}

QList<logline> chatlog::tail(const QString &network, const QString &name, int count)
{
    flush();
    QList<QByteArray> lines = logfile(data, logname(network), logname(name)).tail(maxTail).split('\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    QList<logline> read;
    for (const QByteArray &line : lines.last(qBound(qsizetype{0}, qsizetype{count}, lines.size())))
        read.append(logline::read(line));
    return read;
}

void chatlog::flush()
{
    timer.stop();
    waitingBytes = 0;
    const auto batches = std::exchange(waiting, {});
    for (auto batch = batches.begin(); batch != batches.end(); ++batch) {
        logfile file(data, batch.key().first, batch.key().second);
        if (!file.append(*batch) && !std::exchange(isTold, true))
            Q_EMIT failed(tr("%1 cannot be written: %2").arg(file.path(), file.error()));
    }
}

QString chatlog::folder() const
{
    return logfile::topOf(data);
}
