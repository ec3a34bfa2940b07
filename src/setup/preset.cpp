// SPDX-License-Identifier: MIT
#include "setup/preset.h"

#include "platform/config.h"

#include <QRegularExpression>

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
    names.setGroup(QStringLiteral("Presets"));
    Config details(config);
    for (qsizetype i = 0; names.hasKey(QString::number(i)); ++i) {
        details.setGroup(groupOf(i));
        preset p;
        p.name = names.readEntry(QString::number(i));
        p.nick = details.readEntry(QStringLiteral("nick"), defaultNick());
        p.server = details.readEntry(QStringLiteral("server"), defaultServer());
        p.port = details.readEntry(QStringLiteral("port"), QStringLiteral("6667")).toUInt(nullptr, 10);
        p.password = details.readEntry(QStringLiteral("password"));
        p.channels = splitChannels(details.readEntry(QStringLiteral("channels")));
        presets.append(p);
    }
    return presets;
}

bool preset::save(const QString &config, const QList<preset> &presets)
{
    Config file(config);
    file.setGroup(QStringLiteral("Presets"));
    file.clearGroup();
    for (qsizetype i = 0; i < presets.size(); ++i) {
        const preset &p = presets.at(i);
        file.setGroup(QStringLiteral("Presets"));
        file.writeEntry(QString::number(i), p.name);
        file.setGroup(groupOf(i));
        file.writeEntry(QStringLiteral("nick"), p.nick);
        file.writeEntry(QStringLiteral("server"), p.server);
        file.writeEntry(QStringLiteral("port"), QString::number(p.port));
        file.writeEntry(QStringLiteral("password"), p.password);
        file.writeEntry(QStringLiteral("channels"), p.channels.join(u','));
    }
    return file.save();
}

QStringList preset::splitChannels(const QString &text)
{
    static const QRegularExpression separator(QStringLiteral("[, ]"));
    return text.split(separator, Qt::SkipEmptyParts);
}

QString preset::defaultNick()
{
    return QStringLiteral("ParloUser");
}

QString preset::defaultServer()
{
    return QStringLiteral("irc.libera.chat");
}
