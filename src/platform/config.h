// SPDX-License-Identifier: MIT
#pragma once

#include <QLockFile>
#include <QMap>
#include <QString>

/// The settings file of a program: groups of keys with text values, for one user.
///
/// It is `NAME.conf` in the user's configuration directory ($XDG_CONFIG_HOME, or ~/.config), in INI format,
/// and readable by its owner alone, since it may hold passwords. What is written goes to the file when the
/// object goes, whole or not at all. A file that is missing or cannot be read holds nothing; one that could
/// not be read to the last line is renamed to `NAME.conf.broken` before another one takes its place.
///
/// The first change locks the file against other programs until it is written: let the object go soon.
/// Groups and keys are plain words.
class Config
{
public:
    enum Domain { User };

    /// What this program's settings are called.
    static QString settingsName() { return QStringLiteral("parlo"); }

    explicit Config(const QString &name, Domain domain = User);
    ~Config();
    Config(const Config &) = delete;
    Config &operator=(const Config &) = delete;

    /// Chooses the group that the other calls mean.
    void setGroup(const QString &name);
    bool hasKey(const QString &key) const;
    QString readEntry(const QString &key, const QString &fallback = {}) const;
    void writeEntry(const QString &key, const QString &value);
    /// All keys of the group with their values.
    QMap<QString, QString> entries() const { return groups.value(group); }
    void removeEntry(const QString &key);
    /// Removes all keys of the group.
    void clearGroup();
    /// Writes the changes now. False, and a warning, if that cannot be; then the file is what it was.
    bool save();

private:
    void load();
    void loadLine(QStringView line, QString *inGroup);
    /// To be called before each change.
    void edit();
    bool replaceFile() const;

    QString path;
    QLockFile lock;
    QString group;
    QMap<QString, QMap<QString, QString>> groups;
    /// Whether `groups` holds all that the file does, but for remarks.
    bool whole = true;
    bool changed = false;
};
