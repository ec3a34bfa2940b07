// SPDX-License-Identifier: MIT
#include "capnegotiation.h"

#include "ircmessage.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// All that we use. Together they are far shorter than what a line of 400 bytes can ask for.
constexpr QLatin1StringView used[] = {
    "sasl"_L1,    "server-time"_L1, "message-tags"_L1, "multi-prefix"_L1, "batch"_L1,
    "chghost"_L1, "setname"_L1,     "account-tag"_L1,  "cap-notify"_L1,
};

constexpr qsizetype saslPiece = 400;

bool isUsed(QStringView capability)
{
    return std::find(std::begin(used), std::end(used), capability) != std::end(used);
}

} // namespace

capnegotiation::capnegotiation(credentials with, bool isEncrypted)
    : login(std::move(with)), encrypted(isEncrypted)
{
}

QString capnegotiation::begin()
{
    return u"CAP LS 302"_s;
}

QStringList capnegotiation::receive(const ircmessage &message)
{
    const QString command = message.command();
    if (command == "CAP"_L1)
        return handleCap(message);
    if (m_result != outcome::open)
        return {};
    if (command == "001"_L1) {
        // The server does without: it knows no CAP, or does not wait for its end.
        m_result = !wantsLogin() ? outcome::done : isLoggingIn() ? outcome::silent : outcome::noMechanism;
        return {};
    }
    if (!isLoggingIn())
        return {};
    if (command == "AUTHENTICATE"_L1)
        return authenticate(message.param(0, true));
    if (command == "903"_L1 || command == "907"_L1)
        return finish(outcome::done);
    if (command == "902"_L1 || command == "904"_L1 || command == "905"_L1 || command == "906"_L1)
        return finish(outcome::refused);
    // The mechanisms that there are. A 904 comes behind it.
    if (command == "908"_L1 && !message.param(1, true).split(u',').contains(mechanism))
        return finish(outcome::noMechanism);
    return {};
}

QStringList capnegotiation::handleCap(const ircmessage &message)
{
    // The first word is our name as far as the server knows it: "*", or anything else.
    const QString what = message.param(1, false);
    const bool more = message.param(2, false) == u'*' && message.paramCount() > 3;
    // Some servers put a space too many behind the last name.
    const QStringList names = message.paramsFrom(more ? 3 : 2, true).split(u' ', Qt::SkipEmptyParts);
    if (what == "LS"_L1 || what == "NEW"_L1) {
        list(names);
        return more || m_result == outcome::upgrade ? QStringList() : request();
    }
    if (what == "ACK"_L1)
        return acknowledged(names);
    if (what == "NAK"_L1)
        return rejected();
    if (what == "DEL"_L1)
        withdrawn(names);
    return {};
}

void capnegotiation::timeOut()
{
    if (m_result == outcome::open)
        m_result = outcome::silent;
}

void capnegotiation::list(const QStringList &capabilities)
{
    for (const QString &capability : capabilities) {
        const QString name = capability.section(u'=', 0, 0);
        const QString value = capability.section(u'=', 1);
        if (isUsed(name))
            offered.insert(name, value);
        if (name == "sts"_L1)
            m_sts = stsoffer::read(value);
    }
    if (!encrypted && m_sts.port != 0)
        m_result = outcome::upgrade;
}

QStringList capnegotiation::request()
{
    QStringList wanted;
    for (const QLatin1StringView capability : used) {
        const QString name(capability);
        const auto asks = [&name](const QStringList &line) { return line.contains(name); };
        if (offered.contains(name) && !enabled.contains(name) &&
            std::none_of(asked.begin(), asked.end(), asks))
            wanted.append(name);
    }
    if (wanted.isEmpty())
        return asked.isEmpty() ? logIn() : QStringList();
    asked.append(wanted);
    return {u"CAP REQ :" + wanted.join(u' ')};
}

QStringList capnegotiation::acknowledged(const QStringList &capabilities)
{
    if (asked.isEmpty())
        return {};
    for (const QString &name : asked.takeFirst()) {
        if (capabilities.contains(name))
            enabled.append(name);
    }
    return asked.isEmpty() ? logIn() : QStringList();
}

QStringList capnegotiation::rejected()
{
    if (asked.isEmpty())
        return {};
    const QStringList line = asked.takeFirst();
    if (line.size() == 1)
        return asked.isEmpty() ? logIn() : QStringList();
    QStringList lines;
    for (const QString &name : line) {
        asked.append({name});
        lines.append(u"CAP REQ :" + name);
    }
    return lines;
}

void capnegotiation::withdrawn(const QStringList &capabilities)
{
    // "sts" cannot be taken back so.
    for (const QString &name : capabilities) {
        offered.remove(name);
        enabled.removeAll(name);
    }
    if (isLoggingIn() && !isEnabled(u"sasl"_s))
        m_result = outcome::silent;
}

QString capnegotiation::chooseMechanism() const
{
    // Without a value the server does not say which it has.
    const QStringList known = offered.value(u"sasl"_s).toUpper().split(u',', Qt::SkipEmptyParts);
    const auto has = [&known](const QString &name) { return known.isEmpty() || known.contains(name); };
    if (login.byCertificate && has(u"EXTERNAL"_s))
        return u"EXTERNAL"_s;
    const bool complete = !login.account.isEmpty() && !login.password.isEmpty();
    return complete && has(u"PLAIN"_s) ? u"PLAIN"_s : QString();
}

QStringList capnegotiation::logIn()
{
    if (m_result != outcome::open || isLoggingIn())
        return {};
    if (!wantsLogin())
        return finish(outcome::done);
    const QString chosen = offered.contains(u"sasl"_s) ? chooseMechanism() : QString();
    if (chosen.isEmpty())
        return finish(outcome::noMechanism);
    // sasl-3.2: what is offered and then not granted has lost its service.
    if (!isEnabled(u"sasl"_s))
        return finish(outcome::silent);
    mechanism = chosen;
    return {u"AUTHENTICATE " + mechanism};
}

QStringList capnegotiation::authenticate(const QString &challenge)
{
    // Neither of our mechanisms is asked twice, or for anything in particular.
    if (credentialsSent || challenge != u'+')
        return {};
    credentialsSent = true;
    QByteArray answer;
    if (mechanism == "PLAIN"_L1) {
        const QByteArray account = login.account.toUtf8();
        answer = QByteArray(account + '\0' + account + '\0' + login.password.toUtf8()).toBase64();
    }
    QStringList lines;
    for (qsizetype i = 0; i < answer.size(); i += saslPiece)
        lines.append(u"AUTHENTICATE " + QString::fromLatin1(answer.mid(i, saslPiece)));
    if (answer.size() % saslPiece == 0)
        lines.append(u"AUTHENTICATE +"_s);
    return lines;
}

QStringList capnegotiation::finish(outcome how)
{
    m_result = how;
    return how == outcome::done ? QStringList(u"CAP END"_s) : QStringList();
}
