// SPDX-License-Identifier: MIT
#include "platform/config.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

Config::Config(const QString &name, Domain /*domain*/)
    : settings(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u'/' + name +
                   u".conf",
               QSettings::IniFormat)
{
}

Config::~Config()
{
    // A file that is made here is nobody else's from its first moment on, and one that was made by hand is
    // from the first time that we write it: QSettings keeps the permissions that it finds.
    constexpr QFile::Permissions ownerOnly = QFile::ReadOwner | QFile::WriteOwner;
    if (changed && !QFile(settings.fileName()).open(QFile::WriteOnly | QFile::NewOnly, ownerOnly) &&
        QFileInfo(settings.fileName()).isFile())
        QFile::setPermissions(settings.fileName(), ownerOnly);
}

void Config::setGroup(const QString &group)
{
    prefix = group + u'/';
}

bool Config::hasKey(const QString &key) const
{
    return settings.contains(prefix + key);
}

QString Config::readEntry(const QString &key, const QString &fallback) const
{
    // QSettings splits what stands unquoted between commas; a single text is a list of one.
    const QVariant value = settings.value(prefix + key, fallback);
    return value.toStringList().join(u',');
}

void Config::writeEntry(const QString &key, const QString &value)
{
    settings.setValue(prefix + key, value);
    changed = true;
}

void Config::clearGroup()
{
    settings.remove(prefix.chopped(1));
    changed = true;
}
