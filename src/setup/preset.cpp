// SPDX-License-Identifier: MIT
#include "preset.h"

#include "config.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

QString groupOf(qsizetype index)
{
    return u"Preset" + QString::number(index);
}

} // namespace

QList<preset> preset::load(const QString &config)
{
    QList<preset> presets;
    Config names(config);
    names.setGroup(u"Presets"_s);
    Config details(config);
    for (qsizetype i = 0; names.hasKey(QString::number(i)); ++i) {
        details.setGroup(groupOf(i));
        preset p;
        p.name = names.readEntry(QString::number(i));
        p.nick = details.readEntry(u"nick"_s, defaultNick());
        p.server = details.readEntry(u"server"_s, defaultServer());
        p.port = details.readEntry(u"port"_s, QString::number(ircPort)).toUInt(nullptr, 10);
        p.password = details.readEntry(u"password"_s);
        p.channels = splitChannels(details.readEntry(u"channels"_s));
        presets.append(p);
    }
    return presets;
}

bool preset::save(const QString &config, const QList<preset> &presets)
{
    Config file(config);
    file.setGroup(u"Presets"_s);
    file.clearGroup();
    for (qsizetype i = 0; i < presets.size(); ++i) {
        const preset &p = presets.at(i);
        file.setGroup(u"Presets"_s);
        file.writeEntry(QString::number(i), p.name);
        file.setGroup(groupOf(i));
        file.writeEntry(u"nick"_s, p.nick);
        file.writeEntry(u"server"_s, p.server);
        file.writeEntry(u"port"_s, QString::number(p.port));
        file.writeEntry(u"password"_s, p.password);
        file.writeEntry(u"channels"_s, p.channels.join(u','));
    }
    return file.save();
}

QStringList preset::splitChannels(const QString &text)
{
    static const QRegularExpression separator(u"[, ]"_s);
    return text.split(separator, Qt::SkipEmptyParts);
}

QString preset::defaultNick()
{
    return u"ParloUser"_s;
}

QString preset::defaultServer()
{
    return u"irc.libera.chat"_s;
}
