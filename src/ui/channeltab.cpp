// SPDX-License-Identifier: MIT
#include "channeltab.h"

#include "box.h"
#include "fingerstyle.h"
#include "ircchannel.h"
#include "ircmode.h"
#include "ircuser.h"
#include "ircuserbox.h"
#include "ircview.h"
#include "isupport.h"
#include "tabwindow.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace {

/// The maximum width of the member list, in pixels.
constexpr int userBoxWidth = 70;

} // namespace

channeltab::channeltab(tabwindow *window, ircchannel *roster, const QString &tabName)
    : irctab(window, tabName), channel(roster)
{
    rules = &channel->rules();
    splitBox = new QWidget(page);
    auto *row = box<QHBoxLayout>(splitBox);
    page->layout()->addWidget(splitBox);
    addView(splitBox);
    toggleButton = new QPushButton(u">"_s, view);
    toggleButton->setAccessibleName(tr("Hide the members"));
    toggleButton->setFocusPolicy(Qt::TabFocus);
    view->setCornerWidget(toggleButton);
    fingerstyle::apply(view->horizontalScrollBar());
    connect(toggleButton, &QPushButton::clicked, this, &channeltab::showHideUserlist);
    userBox = new ircuserbox(splitBox);
    userBox->setMaximumWidth(userBoxWidth);
    row->addWidget(userBox);
    userBox->setAccessibleName(tr("Members of %1").arg(tabName));
    addInput(usercommands::place::channel, [this] { return nicks(); });
    if (!mainWindow->prefs().userListShown)
        showHideUserlist();
    Q_EMIT amTopTab(this);
}

void channeltab::showHideUserlist()
{
    userBox->setMaximumWidth(userListShown ? 0 : userBoxWidth);
    toggleButton->setText(userListShown ? u"<"_s : u">"_s);
    toggleButton->setAccessibleName(userListShown ? tr("Show the members") : tr("Hide the members"));
    userListShown = !userListShown;
    // A list of width 0 would still get the focus.
    userBox->setFocusPolicy(userListShown ? Qt::TabFocus : Qt::NoFocus);
    if (userBox->hasFocus())
        input->setFocus();
    mainWindow->prefer(&preferences::userListShown, userListShown);
    // The view needs its new width before it can scroll to its bottom.
    splitBox->layout()->activate();
    view->showNewest();
}

QStringList channeltab::nicks() const
{
    QStringList all;
    for (const ircchanneluser &member : *channel->roster())
        all.append(member.nick());
    return all;
}

void channeltab::join(ircuser *who)
{
    view->join(who->nick());
    channel->join(who);
    userBox->fill(channel);
}

void channeltab::part(ircuser *who, const QString &reason)
{
    view->part(who->nick(), reason);
    channel->remove(who);
    userBox->fill(channel);
}

void channeltab::quit(ircuser *who, const QString &reason)
{
    view->quit(who->nick(), reason);
    channel->remove(who);
    userBox->fill(channel);
}

void channeltab::kick(ircuser *who, const QString &victim, const QString &reason)
{
    view->kick(who->nick(), victim, reason);
    const ircuser kicked(victim);
    channel->remove(&kicked);
    userBox->fill(channel);
}

void channeltab::names(QStringList *names)
{
    // The list shows the old roster until the listing ends.
    userBox->takePending();
    channel->names(names);
}

void channeltab::endofnames()
{
    channel->endNames();
    userBox->fill(channel);
}

void channeltab::mode(ircmode *m)
{
    if (!rules->same(m->target(), tabName()))
        return;
    channel->mode(m);
    userBox->fill(channel);
}

void channeltab::nick(const QString &oldNick, const QString &newNick)
{
    view->nick(oldNick, newNick);
    channel->nick(oldNick, newNick);
    userBox->fill(channel);
}

void channeltab::rejoined()
{
    channel->clear();
    userBox->fill(channel);
}

void channeltab::crowd(bool left, const QString &text)
{
    view->crowd(left, text);
    userBox->fill(channel);
}
