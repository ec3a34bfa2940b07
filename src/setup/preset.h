// SPDX-License-Identifier: MIT
#pragma once

#include "destination.h"

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
    /// Used and edited only where the server is an address.
    QString password;
    QStringList channels;

    // Only where the server is an address:
    QString altNick = {};
    QStringList perform = {};
    /// A PEM file; set in the settings file by hand.
    QString certificate = {};

    /// Whether the server is an address, right or wrong.
    bool isByAddress() const { return ircaddress::isMeant(server); }
    /// What a session by address needs; nothing where the server is a host.
    destination details() const;

    /// Reads the presets of the settings file `config`, in their order; the first missing index ends the list.
    static QList<preset> load(const QString &config);
    /// Writes all of `presets`; false if the file cannot be written. Groups of deleted presets stay in the
    /// file, and nothing reads them.
    static bool save(const QString &config, const QList<preset> &presets);

    /// Splits names that are separated by commas or spaces.
    static QStringList splitChannels(const QString &text);
    static QString defaultNick();
    static QString defaultServer();
};
