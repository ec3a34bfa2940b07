// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The file of one log, DATA/parlo/FOLDER/NAME.log. It is opened for each call, so that many logs take no descriptors.
///
/// Only its owner can read it and its folders. It must be a plain file of the user's own with one name. A link or a FIFO
/// in its place, or in that of a folder below DATA, is an error. No call waits for another program.
class logfile
{
public:
    /// `folder` and `name` are those of logname().
    logfile(QString dataFolder, QString folder, const QString &name);

    /// The folder of all logs, and the path of this one.
    static QString topOf(const QString &dataFolder);
    QString path() const;

    /// Adds `lines`, which end with a line break, in one piece: another program may do the same. False if not all of it
    /// could be written, see error(). A line that was cut off, now or earlier, is ended before new lines begin.
    bool append(const QByteArray &lines);
    /// The last bytes, at most `most`, from the beginning of a line on. Empty if there are none or it cannot be read.
    QByteArray tail(qint64 most) const;

    /// Why append() failed.
    const QString &error() const { return m_error; }

private:
    /// A descriptor, or -1 with errno. With O_CREAT in `flags`, it makes what is missing.
    int open(int flags) const;

    QString data;
    QString folder;
    QString name;
    QString m_error;
};
