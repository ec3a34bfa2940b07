// SPDX-License-Identifier: MIT
#include "linkfault.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

using enum linkfault::kind;

constexpr bool passing = true;
constexpr bool lasting = false;

struct faultrow
{
    linkfault::kind what = none;
    bool passes = false;
    /// HOST, PORT and DETAIL stand for themselves.
    QLatin1StringView text;
};

constexpr faultrow rows[] = {
    {noHost, passing, "No such server: HOST"_L1},
    {refused, passing, "HOST refused port PORT"_L1},
    {noAnswer, passing, "HOST does not answer"_L1},
    {noTls, passing, "No TLS on port PORT of HOST"_L1},
    {outdatedTls, passing, "HOST speaks only outdated TLS"_L1},
    {noTlsInQt, lasting, "This Qt has no TLS"_L1},
    {pinChanged, lasting,
     "Not connected: the certificate has CHANGED since you trusted it. SHA-256 DETAIL If you know why: /trust"_L1},
    {untrusted, lasting,
     "Not connected: nobody vouches for this certificate. SHA-256 DETAIL To trust it: /trust"_L1},
    {otherName, lasting, "Not connected: the certificate is for another name"_L1},
    {expired, lasting, "Not connected: the certificate has expired"_L1},
    {notYetValid, lasting, "Not connected: the certificate is not valid yet"_L1},
    {badCertificateFile, lasting,
     "The certificate DETAIL cannot be used: it is missing, or others can read it"_L1},
    {passwordNeedsTls, lasting, "Not connected: a password needs ircs://"_L1},
    {noPassword, lasting, "No password for the account DETAIL"_L1},
    {loginRefused, lasting, "Not logged in: wrong account or password"_L1},
    {noMechanism, passing, "This server offers no login that Parlo knows"_L1},
    {silentServices, passing, "The login service does not answer"_L1},
    {noNickLeft, lasting, "No nick is free: choose one with /nick, then /server"_L1},
    {serverRefuses, lasting, "DETAIL"_L1},
    {noWelcome, passing, "The server does not welcome us"_L1},
    {dead, passing, "Connection lost: no answer for 120 s"_L1},
    {lost, passing, "Connection lost: DETAIL"_L1},
    {quit, lasting, ""_L1},
};

} // namespace

linkfault::linkfault(kind kindOfFault, const QString &host, quint16 port, QString kindDetail)
    : what(kindOfFault), detail(std::move(kindDetail))
{
    for (const faultrow &row : rows) {
        if (row.what != what)
            continue;
        passes = row.passes;
        text = row.text;
        text.replace("HOST"_L1, host).replace("PORT"_L1, QString::number(port)).replace("DETAIL"_L1, detail);
    }
    if (what == lost && detail.isEmpty())
        text = u"Connection lost"_s;
}

linkfault::kind linkfault::kindOf(QAbstractSocket::SocketError error)
{
    switch (error) {
    case QAbstractSocket::ConnectionRefusedError:
        return refused;
    case QAbstractSocket::HostNotFoundError:
        return noHost;
    default:
        return noAnswer;
    }
}
