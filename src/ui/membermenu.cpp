// SPDX-License-Identifier: MIT
#include "membermenu.h"

#include "fingerstyle.h"
#include "formatting.h"
#include "ircchanneluser.h"

using namespace Qt::StringLiterals;

namespace {

/// The maximum of a nick that is read, in characters, and of its width, in letters of average width.
constexpr qsizetype maxRead = 128;
constexpr int maxWidth = 20;

using circumstances = membermenu::circumstances;

struct entry
{
    memberaction what;
    const char *label;
    bool (*offered)(const ircchanneluser &member, const circumstances &when);
};

constexpr entry entries[] = {
    {memberaction::query, QT_TRANSLATE_NOOP("membermenu", "&Query"), [](auto &, auto &) { return true; }},
    {memberaction::whois, QT_TRANSLATE_NOOP("membermenu", "&Whois"),
     [](auto &, auto &when) { return when.moreCommands; }},
    {memberaction::ignore, QT_TRANSLATE_NOOP("membermenu", "&Ignore"),
     [](auto &, auto &when) { return when.moreCommands && !when.ourselves; }},
    {memberaction::op, QT_TRANSLATE_NOOP("membermenu", "&Op"),
     [](auto &member, auto &when) { return when.weAreOperator && !member.isOp(); }},
    {memberaction::deop, QT_TRANSLATE_NOOP("membermenu", "De&op"),
     [](auto &member, auto &when) { return when.weAreOperator && member.isOp(); }},
    {memberaction::voice, QT_TRANSLATE_NOOP("membermenu", "&Voice"),
     [](auto &member, auto &when) { return when.weAreOperator && !member.isVoice(); }},
    {memberaction::devoice, QT_TRANSLATE_NOOP("membermenu", "De&voice"),
     [](auto &member, auto &when) { return when.weAreOperator && member.isVoice(); }},
    {memberaction::kick, QT_TRANSLATE_NOOP("membermenu", "&Kick"),
     [](auto &, auto &when) { return when.weAreOperator && !when.ourselves; }},
};

} // namespace

membermenu::membermenu(const ircchanneluser &member, circumstances when, QWidget *parent) : QMenu(parent)
{
    fingerstyle::apply(this);
    setAttribute(Qt::WA_DeleteOnClose);
    const QString nick = fontMetrics().elidedText(unformatted(member.nick().left(maxRead)), Qt::ElideMiddle,
                                                  maxWidth * fontMetrics().averageCharWidth());
    setAccessibleName(tr("Menu of %1").arg(nick));
    QAction *title = addAction(QString(nick).replace(u'&', u"&&"_s));
    title->setEnabled(false);
    // It cannot be chosen, but it must be readable.
    QPalette colours = palette();
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        colours.setColor(QPalette::Disabled, role, colours.color(QPalette::Active, role));
    setPalette(colours);
    QFont bold = font();
    bold.setBold(true);
    title->setFont(bold);
    addSeparator();
    for (const entry &e : entries) {
        if (e.offered(member, when))
            connect(addAction(tr(e.label)), &QAction::triggered, this, [this, &e] { Q_EMIT chosen(e.what); });
    }
}
