// SPDX-License-Identifier: MIT
#include "config.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QStringDecoder>

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Enough for a thousand presets. Any file of this size is read and shown in a tenth of a second.
constexpr qint64 maxBytes = qint64{128} * 1024;
/// Another Parlo holds the lock for a few milliseconds; the window must not wait for one that hangs.
constexpr int lockMilliseconds = 1000;

constexpr std::array<std::pair<char16_t, char16_t>, 7> escapes{{{u'a', u'\a'},
                                                                {u'b', u'\b'},
                                                                {u'f', u'\f'},
                                                                {u'n', u'\n'},
                                                                {u'r', u'\r'},
                                                                {u't', u'\t'},
                                                                {u'v', u'\v'}}};

bool isHex(QChar c)
{
    return QStringView(u"0123456789abcdefABCDEF").contains(c);
}

/// Removes an escape sequence, without its backslash, from the front of `raw`, and returns its character.
QChar takeEscape(QStringView *raw)
{
    const QChar letter = raw->front();
    qsizetype used = 1;
    const auto digitsEnd = qMin(raw->size(), qsizetype{5});
    while (letter == u'x' && used < digitsEnd && isHex(raw->at(used)))
        ++used;
    const QStringView digits = raw->first(used).sliced(1);
    *raw = raw->sliced(used);
    if (!digits.isEmpty())
        return {digits.toUShort(nullptr, 16)};
    for (const auto &[name, meaning] : escapes) {
        if (letter == name)
            return meaning;
    }
    return letter;
}

/// Decodes `raw`, a value as it is written in the file. False if a quote in it is not closed.
bool decode(QStringView raw, QString *text)
{
    bool quoted = false;
    qsizetype end = 0;
    while (!raw.isEmpty() && (quoted || raw.front() != u';')) {
        const QChar c = raw.front();
        raw = raw.sliced(1);
        if (c == u'"')
            quoted = !quoted;
        else
            text->append(c == u'\\' && !raw.isEmpty() ? takeEscape(&raw) : c);
        if (quoted || !c.isSpace())
            end = text->size();
    }
    text->truncate(end);
    // Older files were written by QSettings, which writes "@@" for a leading "@".
    if (text->startsWith(u"@@"))
        text->remove(0, 1);
    return !quoted;
}

QString encode(const QString &text)
{
    QString safe(text.startsWith(u'@') ? 1 : 0, u'@');
    bool plain = text == text.trimmed();
    for (const QChar c : text) {
        plain = plain && c.isPrint() && !QStringView(u";,\"\\").contains(c);
        if (!c.isPrint())
            safe += u"\\x%1"_s.arg(c.unicode(), 4, 16, QChar(u'0'));
        else if (c == u'"' || c == u'\\')
            safe += QString(u'\\') + c;
        else
            safe += c;
    }
    return plain ? safe : u'"' + safe + u'"';
}

/// Renames `path`; if it is a link, the link itself. Returns the new name, or an empty one if that fails.
QString setAside(const QString &path)
{
    for (int i = 1;; ++i) {
        const QString name = path + u".broken" + (i == 1 ? QString() : QString::number(i));
        if (QFileInfo::exists(name) || QFileInfo(name).isSymLink())
            continue;
        return QFile::rename(path, name) ? name : QString();
    }
}

} // namespace

Config::Config(const QString &name, Domain /*domain*/)
    : path(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u'/' + name + u".conf"),
      lock(path + u".lock")
{
    load();
}

Config::~Config()
{
    save();
}

void Config::setGroup(const QString &name)
{
    group = name;
}

bool Config::hasKey(const QString &key) const
{
    return groups.value(group).contains(key);
}

QString Config::readEntry(const QString &key, const QString &fallback) const
{
    return groups.value(group).value(key, fallback);
}

void Config::writeEntry(const QString &key, const QString &value)
{
    edit();
    groups[group].insert(key, value);
}

void Config::removeEntry(const QString &key)
{
    edit();
    groups[group].remove(key);
}

void Config::clearGroup()
{
    edit();
    groups.remove(group);
}

bool Config::save()
{
    if (!std::exchange(changed, false))
        return true;
    const bool saved = lock.isLocked() && replaceFile();
    lock.unlock();
    if (!saved)
        qWarning("%s cannot be written", qPrintable(path));
    return saved;
}

void Config::load()
{
    groups.clear();
    whole = true;
    const QFileInfo info(path);
    if (!info.exists())
        return;
    // Opening a FIFO would block until someone opens its other end, and a device may not end.
    QFile file(path);
    whole = info.isFile() && file.open(QFile::ReadOnly);
    if (!whole)
        return;
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(file.read(maxBytes));
    whole = file.atEnd() && !utf8.hasError() && !text.contains(QChar::Null);
    QString inGroup;
    for (const QStringView line : QStringView(text).split(u'\n'))
        loadLine(line.trimmed(), &inGroup);
}

void Config::loadLine(QStringView line, QString *inGroup)
{
    const qsizetype bracket = line.indexOf(u']');
    const qsizetype equals = line.indexOf(u'=');
    if (line.isEmpty() || line.startsWith(u';') || line.startsWith(u'#'))
        return;
    if (line.startsWith(u'[')) {
        *inGroup = line.first(bracket < 0 ? line.size() : bracket).sliced(1).toString();
        const QStringView rest = line.sliced(bracket + 1).trimmed();
        whole = whole && (rest.isEmpty() || rest.startsWith(u';'));
    } else if (equals > 0) {
        QString value;
        whole = decode(line.sliced(equals + 1).trimmed(), &value) && whole;
        groups[*inGroup].insert(line.first(equals).trimmed().toString(), value);
    } else {
        whole = false;
    }
}

void Config::edit()
{
    if (std::exchange(changed, true))
        return;
    QDir().mkpath(QFileInfo(path).path());
    if (lock.tryLock(lockMilliseconds))
        load();
}

bool Config::replaceFile() const
{
    QString text;
    for (auto entries = groups.begin(); entries != groups.end(); ++entries) {
        // Values in front of the first group have no group.
        if (!entries.key().isEmpty())
            text += (text.isEmpty() ? u"[" : u"\n[") + entries.key() + u"]\n";
        for (auto entry = entries->begin(); entry != entries->end(); ++entry)
            text += entry.key() + u'=' + encode(entry.value()) + u'\n';
    }
    const QByteArray bytes = text.toUtf8();
    if (bytes.size() > maxBytes)
        return false;
    const QString aside = whole ? QString() : setAside(path);
    if (!whole && aside.isEmpty())
        return false;
    QSaveFile file(path);
    if (file.open(QFile::WriteOnly)) {
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        // QSaveFile does not notice by itself that only a part was written.
        if (file.write(bytes) == bytes.size() && file.flush() && file.commit())
            return true;
    }
    if (!whole)
        QFile::rename(aside, path);
    return false;
}
