// SPDX-License-Identifier: MIT
#include "platform/config.h"

#include <QFile>
#include <QStandardPaths>

Config::Config(const QString &name, Domain /*domain*/)
    : settings(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u'/' + name +
                   u".conf",
               QSettings::IniFormat)
{
}

Config::~Config()
{
    settings.sync();
    if (QFile::exists(settings.fileName()))
        QFile::setPermissions(settings.fileName(), QFile::ReadOwner | QFile::WriteOwner);
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
}

void Config::clearGroup()
{
    settings.remove(prefix.chopped(1));
}
