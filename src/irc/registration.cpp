// SPDX-License-Identifier: MIT
#include "registration.h"

#include "destination.h"
#include "ircmessage.h"
#include "ircuser.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

struct outcomerow
{
    capnegotiation::outcome outcome;
    linkfault::kind fault;
};

constexpr outcomerow outcomes[] = {
    {capnegotiation::outcome::refused, linkfault::kind::loginRefused},
    {capnegotiation::outcome::noMechanism, linkfault::kind::noMechanism},
    {capnegotiation::outcome::silent, linkfault::kind::silentServices},
};

} // namespace

QStringList registration::begin(const ircuser &identity, const QString &server, const QStringList &channels)
{
    m_stage = stage::registering;
    nicks = {};
    QStringList lines{u"USER " + identity.user() + u" HOSTNAME " + server + u" :" + identity.realname(),
                      u"NICK " + identity.nick()};
    if (!channels.isEmpty())
        lines.append(u"JOIN " + channels.join(u','));
    return lines;
}

QStringList registration::begin(const ircuser &identity, const destination &to, bool encrypted, int maxNick)
{
    m_stage = stage::registering;
    const QString account = to.address.account();
    negotiation = capnegotiation(
        {account, account.isEmpty() ? QString() : to.password, !to.certificateFile.isEmpty()}, encrypted);
    nicks = nickchoice(identity.nick(), to.altNick, maxNick);
    firstRefusal.clear();
    refusal = {};
    QStringList lines;
    if (account.isEmpty() && !to.password.isEmpty())
        lines.append(u"PASS :" + to.password);
    return lines + QStringList{capnegotiation::begin(), u"NICK " + identity.nick(),
                               u"USER " + identity.user() + u" 0 * :" + identity.realname()};
}

bool registration::refusesNick(const QString &command)
{
    return command == "432"_L1 || command == "433"_L1 || command == "436"_L1 || command == "437"_L1;
}

QStringList registration::receive(const ircmessage &message)
{
    const QString command = message.command();
    if (m_stage == stage::registering && refusesNick(command)) {
        if (firstRefusal.isEmpty())
            firstRefusal = command;
        const QString next = command == "432"_L1 ? nicks.nextAfterRefused() : nicks.nextAfterTaken();
        if (next.isEmpty())
            refusal = linkfault(linkfault::kind::noNickLeft);
        return next.isEmpty() ? QStringList() : QStringList(u"NICK " + next);
    }
    // RFC 2812, 5.2: a wrong password, and a ban.
    if ((command == "464"_L1 && m_stage == stage::registering) || command == "465"_L1)
        refusal = linkfault(linkfault::kind::serverRefuses, {}, 0, message.paramsFrom(1, true));
    return negotiation.receive(message);
}

linkfault registration::fault() const
{
    if (refusal.what != linkfault::kind::none)
        return refusal;
    const auto *row = std::find_if(std::begin(outcomes), std::end(outcomes),
                                   [this](const outcomerow &r) { return r.outcome == negotiation.result(); });
    return row == std::end(outcomes) ? linkfault() : linkfault(row->fault);
}

bool registration::welcome()
{
    return std::exchange(m_stage, stage::welcomed) != stage::welcomed;
}

QString registration::nickNote(const QString &nick) const
{
    if (firstRefusal.isEmpty() || nick == firstNick())
        return {};
    return firstNick() + (firstRefusal == "432"_L1 ? " is not allowed here"_L1 : " is taken"_L1) +
           u"; you are " + nick;
}
