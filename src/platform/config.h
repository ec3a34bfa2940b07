// SPDX-License-Identifier: MIT
#pragma once

#include <QLockFile>
#include <QMap>
#include <QString>

/// The settings file of a program: groups of keys with text values, for one user.
///
/// The file is `NAME.conf` in the user's configuration directory ($XDG_CONFIG_HOME, or ~/.config), in INI
/// format. Only its owner can read it, since it may contain passwords. save(), or the destructor, replaces
/// the whole file or leaves it as it was. A file that is missing or cannot be read counts as empty. One that
/// could not be read completely is renamed to `NAME.conf.broken` before it is replaced.
///
/// The first change locks the file until it is written, so do not keep a changed object for long. Groups and
/// keys are plain words.
class Config
{
public:
    enum Domain { User };

    /// The name of this program's own settings.
    static QString settingsName() { return QStringLiteral("parlo"); }

    explicit Config(const QString &name, Domain domain = User);
    ~Config();
    Config(const Config &) = delete;
    Config &operator=(const Config &) = delete;

    /// Chooses the group for the other calls.
    void setGroup(const QString &name);
    bool hasKey(const QString &key) const;
    QString readEntry(const QString &key, const QString &fallback = {}) const;
    void writeEntry(const QString &key, const QString &value);
    /// All keys of the group with their values.
    QMap<QString, QString> entries() const { return groups.value(group); }
    void removeEntry(const QString &key);
    /// Removes all keys of the group.
    void clearGroup();
    /// Writes the changes now. If that fails, it returns false and warns, and the file is as it was.
    bool save();

private:
    void load();
    void loadLine(QStringView line, QString *inGroup);
    /// Call this before each change.
    void edit();
    bool replaceFile() const;

    QString path;
    QLockFile lock;
    QString group;
    QMap<QString, QMap<QString, QString>> groups;
    /// Whether the whole file was understood, apart from comments.
    bool whole = true;
    bool changed = false;
};
