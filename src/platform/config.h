// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>
#include <QString>

/// The settings file of a program: groups of keys with text values, for one user.
///
/// It is `NAME.conf` in the user's configuration directory ($XDG_CONFIG_HOME, or ~/.config), in INI format,
/// and readable by its owner alone, since it may hold passwords. What is written goes to the file when the
/// object goes, whole or not at all. A file that is missing or cannot be read holds nothing.
class Config
{
public:
    enum Domain { User };

    explicit Config(const QString &name, Domain domain = User);
    ~Config();
    Config(const Config &) = delete;
    Config &operator=(const Config &) = delete;

    /// Chooses the group that the other calls mean.
    void setGroup(const QString &group);
    bool hasKey(const QString &key) const;
    /// The value of `key`. A list that somebody wrote by hand without quotes comes joined with ",".
    QString readEntry(const QString &key, const QString &fallback = {}) const;
    void writeEntry(const QString &key, const QString &value);
    /// Removes all keys of the group.
    void clearGroup();

private:
    QSettings settings;
    QString prefix;
    bool changed = false;
};
