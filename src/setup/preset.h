// SPDX-License-Identifier: MIT
#pragma once

#include "ircport.h"

#include <QList>
#include <QString>
#include <QStringList>

/// A named set of connection details, as the user keeps it in the settings file.
struct preset
{
    QString name;
    QString server;
    unsigned int port = ircPort;
    QString nick;
    /// Kept in the file, but neither edited nor sent.
    QString password;
    QStringList channels;

    /// Reads the presets of the settings file `config`, in their order; the first missing index ends the
    /// list.
    static QList<preset> load(const QString &config);
    /// Writes all of `presets`; false if the file cannot be written. Groups of deleted presets stay in the
    /// file, and nothing reads them.
    static bool save(const QString &config, const QList<preset> &presets);

    /// Splits names that are separated by commas or spaces.
    static QStringList splitChannels(const QString &text);
    static QString defaultNick();
    static QString defaultServer();
};
