// SPDX-License-Identifier: MIT
#include "ircaddress.h"

#include <QHostAddress>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView plainScheme("irc://");
constexpr QLatin1StringView encryptedScheme("ircs://");
constexpr int plainPort = 6667;
constexpr int encryptedPort = 6697;
/// Longer ones, such as a page on the web could hand us, are no address that a person means.
constexpr qsizetype maxLength = 2048;

constexpr QLatin1StringView noAddress("This is no address: ircs://name:port");
constexpr QLatin1StringView noChannel("Leave what is no channel out of the address");

bool isChannelCharacter(QChar c)
{
    return u"#&+!"_s.contains(c); // RFC 2812, 1.3
}

bool isSpaceOrControl(QChar c)
{
    return c.isSpace() || c.category() == QChar::Other_Control;
}

bool isPort(int number)
{
    return number > 0 && number <= 65535;
}

/// What percent signs stand for (RFC 3986, 2.1); null when that is no text for a line.
QString decoded(const QString &text)
{
    const QString plain = QUrl::fromPercentEncoding(text.toUtf8());
    const bool strange = plain.contains(QChar::ReplacementCharacter) ||
                         std::any_of(plain.begin(), plain.end(), isSpaceOrControl);
    return strange ? QString() : plain;
}

} // namespace

ircaddress::ircaddress(const QString &text)
{
    encrypted = text.startsWith(encryptedScheme, Qt::CaseInsensitive);
    const QString rest = text.mid(encrypted ? encryptedScheme.size() : plainScheme.size());
    const auto *end = std::find_if(rest.begin(), rest.end(), [](QChar c) { return u"/?#"_s.contains(c); });
    const qsizetype authority = end - rest.begin();
    if (!isMeant(text) || text.size() > maxLength || std::any_of(text.begin(), text.end(), isSpaceOrControl))
        m_error = noAddress;
    if (m_error.isEmpty())
        m_error = readAuthority(rest.left(authority));
    if (m_error.isEmpty())
        m_error = readChannels(rest.mid(authority));
    if (!m_error.isEmpty())
        m_host.clear();
}

bool ircaddress::isMeant(const QString &text)
{
    return text.startsWith(encryptedScheme, Qt::CaseInsensitive) ||
           text.startsWith(plainScheme, Qt::CaseInsensitive);
}

QString ircaddress::readAuthority(const QString &authority)
{
    const qsizetype at = authority.lastIndexOf(u'@');
    const QString user = authority.left(std::max<qsizetype>(at, 0));
    if (user.contains(u':'))
        return u"Leave the password out of the address"_s;
    m_account = decoded(user);
    if (at >= 0 && m_account.isEmpty())
        return noAddress;
    if (at >= 0 && !encrypted)
        return u"An account needs ircs://"_s;

    const QString where = authority.mid(at + 1);
    const qsizetype portColon = where.indexOf(u':', std::max<qsizetype>(where.indexOf(u']'), 0));
    const QString wrong = readHost(portColon < 0 ? where : where.left(portColon));
    return portColon < 0 || !wrong.isEmpty() ? wrong : readPort(where.mid(portColon + 1));
}

// QUrl knows international names and the ways to write an IP address. It is asked for the host alone: it takes a
// whole address without a host, with port 0 or with a password, and a channel for a fragment.
QString ircaddress::readHost(const QString &text)
{
    QUrl url;
    url.setScheme(u"ircs"_s);
    url.setHost(decoded(text), QUrl::DecodedMode);
    if (url.isValid())
        m_host = QUrl::fromPercentEncoding(url.host(QUrl::FullyEncoded).toLatin1());
    return m_host.isEmpty() ? noAddress : QString();
}

QString ircaddress::readPort(const QString &text)
{
    const bool digits = std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    const int number = digits ? text.toInt() : 0;
    if (!isPort(number))
        return noAddress;
    m_port = static_cast<quint16>(number);
    return {};
}

// Channels begin with "#" as fragments do. One that stands behind a name is a fragment.
QString ircaddress::readChannels(const QString &path)
{
    if (path.contains(u'?'))
        return u"Leave the ? out of the address"_s;
    if (path.startsWith(u'#'))
        return noChannel;
    for (const QString &name : path.mid(1).split(u',', Qt::SkipEmptyParts)) {
        QString channel = decoded(name);
        if (channel.isEmpty() || channel.contains(u','))
            return noAddress;
        if (!isChannelCharacter(channel.front())) {
            if (name.contains(u'#'))
                return noChannel;
            channel.prepend(u'#');
        }
        if (channel == u'#')
            return noChannel;
        m_channels.append(channel);
    }
    return {};
}

bool ircaddress::isLoopback() const
{
    return m_host == "localhost"_L1 || QHostAddress(m_host).isLoopback();
}

quint16 ircaddress::port(int asked, int ofPreset) const
{
    if (m_port != 0)
        return m_port;
    if (isPort(asked))
        return static_cast<quint16>(asked);
    if (isPort(ofPreset) && ofPreset != plainPort)
        return static_cast<quint16>(ofPreset);
    return encrypted ? encryptedPort : plainPort;
}
