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

    /// The presets of the settings file `config`, in their order; the first index that is missing ends the
    /// list.
    static QList<preset> load(const QString &config);
    /// Writes all of `presets`; false if that cannot be. Groups of presets that are no more stay in the file,
    /// and nothing reads them.
    static bool save(const QString &config, const QList<preset> &presets);

    /// The names in `text`, which commas or spaces separate.
    static QStringList splitChannels(const QString &text);
    static QString defaultNick();
    static QString defaultServer();
};
