// SPDX-License-Identifier: MIT
//
// Whatever the settings file contains, reading does not change it, and what is written reads back the same.

#include "fuzz.h"

#include "preset.h"

#include <QFile>

#include <tuple>

using namespace Qt::StringLiterals;

static QString path(const QString &name)
{
    return qEnvironmentVariable("XDG_CONFIG_HOME") + u'/' + name + u".conf";
}

static bool same(const preset &a, const preset &b)
{
    return std::tie(a.name, a.nick, a.server, a.port, a.password, a.channels) ==
           std::tie(b.name, b.nick, b.server, b.port, b.password, b.channels);
}

void fuzz(const QByteArray &input)
{
    const QString name = u"fuzzed"_s;
    QFile file(path(name));
    require(file.open(QFile::WriteOnly) && file.write(input) == input.size(), "the file is written");
    file.close();
    QList<preset> presets = preset::load(name);
    require(file.open(QFile::ReadOnly) && file.readAll() == input, "reading leaves the file alone");
    file.close();

    // Adds a preset of the user's.
    const QString text = QString::fromUtf8(input);
    presets.prepend({text, text, 6667, text, text, preset::splitChannels(text)});
    require(preset::save(name, presets), "the file can be written");
    const QList<preset> again = preset::load(name);
    require(std::equal(again.begin(), again.end(), presets.begin(), presets.end(), same),
            "what was written reads back");
    QFile::remove(path(name));
    QFile::remove(path(name) + u".broken");
}
