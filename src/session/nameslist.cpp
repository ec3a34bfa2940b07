// SPDX-License-Identifier: MIT
#include "nameslist.h"

#include "ircchannel.h"

using namespace Qt::StringLiterals;

namespace {

/// In a window of 240 pixels, about ten lines.
constexpr qsizetype maxLength = 400;

QString withRank(const ircchanneluser &member)
{
    if (member.isOp())
        return u'@' + member.nick();
    if (member.isHalfop())
        return u'%' + member.nick();
    return member.isVoice() ? u'+' + member.nick() : member.nick();
}

} // namespace

QString namesText(const ircchannel &channel)
{
    const ircuserlist &members = *channel.roster();
    QString text = members.size() == 1 ? u"1 person:"_s : u"%1 people:"_s.arg(members.size());
    for (const ircchanneluser &member : members) {
        const QString name = withRank(member);
        if (text.size() + name.size() >= maxLength)
            return text + u" \u2026";
        text += u' ' + name;
    }
    return text;
}
