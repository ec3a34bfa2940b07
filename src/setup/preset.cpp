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
        p.altNick = details.readEntry(u"altnick"_s);
        p.perform = details.readEntry(u"perform"_s).split(u'\n', Qt::SkipEmptyParts);
        p.certificate = details.readEntry(u"certificate"_s);
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
        const auto writeForAddress = [&](const QString &key, const QString &value, bool always) {
            if (p.isByAddress() && (always || !value.isEmpty()))
                file.writeEntry(key, value);
            else
                file.removeEntry(key);
        };
        writeForAddress(u"altnick"_s, p.altNick, true);
        writeForAddress(u"perform"_s, p.perform.join(u'\n'), true);
        writeForAddress(u"certificate"_s, p.certificate, false);
    }
    return file.save();
}

destination preset::details() const
{
    if (!isByAddress())
        return {};
    return {ircaddress(server),
            static_cast<quint16>(port > 65535 ? 0 : port),
            password,
            altNick,
            certificate,
            perform,
            channels};
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
    return u"ircs://irc.libera.chat"_s;
}
