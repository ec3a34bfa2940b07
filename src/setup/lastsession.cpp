// SPDX-License-Identifier: MIT
#include "lastsession.h"

#include "config.h"
#include "preset.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

QString group()
{
    return u"Reopen"_s;
}

/// The scheme, the account, the host and the port.
QString written(const ircaddress &address, quint16 port)
{
    QString text = address.isEncrypted() ? u"ircs://"_s : u"irc://"_s;
    if (!address.account().isEmpty())
        text += QLatin1StringView(QUrl::toPercentEncoding(address.account())) + u'@';
    text += address.host().contains(u':') ? u'[' + address.host() + u']' : address.host();
    const quint16 usual = ircaddress(text).port();
    const quint16 wanted = port == 0 ? address.port() : port;
    return wanted == usual ? text : text + u':' + QString::number(wanted);
}

/// A channel as it stands in an address: "#" in front of it is left out where nothing else says that it is one.
QString written(const QString &channel)
{
    const bool plain = channel.startsWith(u'#') && !u"#&+!"_s.contains(channel.mid(1, 1));
    QString text = plain ? channel.mid(1) : channel;
    return text.replace(u'%', u"%25"_s).replace(u'#', u"%23"_s).replace(u'?', u"%3F"_s);
}

} // namespace

lastsession lastsession::load()
{
    Config file(Config::settingsName());
    file.setGroup(group());
    return {ircaddress(file.readEntry(u"Address"_s)), 0, file.readEntry(u"Nick"_s),
            preset::splitChannels(file.readEntry(u"Channels"_s))};
}

void lastsession::save() const
{
    Config file(Config::settingsName());
    file.setGroup(group());
    if (!address.isValid()) {
        if (!file.entries().isEmpty())
            file.clearGroup();
        return;
    }
    file.writeEntry(u"Address"_s, written(address, port));
    file.writeEntry(u"Nick"_s, nick);
    file.writeEntry(u"Channels"_s, channels.join(u','));
}

QString lastsession::text() const
{
    QString all = written(address, port);
    for (const QString &channel : channels) {
        const QString longer =
            all + (all.indexOf(u'/', u"ircs://"_s.size()) < 0 ? u'/' : u',') + written(channel);
        if (ircaddress(longer).isValid())
            all = longer;
    }
    return all;
}
