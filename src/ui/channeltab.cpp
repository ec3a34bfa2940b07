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
#include "widthhandle.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The width of the member list can be changed if the page is wider than this, in pixels.
constexpr int wideEnough = 480;

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
    toggleButton->setFocusPolicy(Qt::TabFocus);
    view->setCornerWidget(toggleButton);
    fingerstyle::apply(view->horizontalScrollBar());
    connect(toggleButton, &QPushButton::clicked, this, &channeltab::showHideUserlist);
    userBox = new ircuserbox(splitBox);
    handle = new widthhandle(userBox, splitBox);
    handle->setAccessibleName(tr("Width of the member list"));
    connect(handle, &widthhandle::wanted, this, [this](int width) {
        mainWindow->prefer(&preferences::userListWidth,
                           std::clamp(width, preferences::minUserListWidth, splitBox->width() / 2));
        fitUserBox();
    });
    row->addWidget(handle);
    row->addWidget(userBox);
    userBox->setAccessibleName(tr("Members of %1").arg(tabName));
    connect(userBox->model(), &QAbstractItemModel::modelReset, this, &channeltab::nameToggle);
    nameToggle();
    fitUserBox();
    splitBox->installEventFilter(this);
    addInput(usercommands::place::channel, [this] { return nicks(); });
    if (!mainWindow->prefs().userListShown)
        showHideUserlist();
    Q_EMIT amTopTab(this);
}

void channeltab::follow(const isupport &serverRules, const manners &sessionManner, const ircuser &we)
{
    irctab::follow(serverRules, sessionManner, we);
    userBox->follow(serverRules, sessionManner, we);
    userBox->setAccessibleName(tr("Members of %1").arg(shownName()));
}

void channeltab::showHideUserlist()
{
    userListShown = !userListShown;
    fitUserBox();
    toggleButton->setText(userListShown ? u">"_s : u"<"_s);
    nameToggle();
    // A list of width 0 would still get the focus.
    userBox->setFocusPolicy(userListShown ? Qt::TabFocus : Qt::NoFocus);
    if (userBox->hasFocus())
        input->setFocus();
    mainWindow->prefer(&preferences::userListShown, userListShown);
    // The view needs its new width before it can scroll to its bottom.
    splitBox->layout()->activate();
    view->showNewest();
}

void channeltab::fitUserBox()
{
    const bool wide = splitBox->width() > wideEnough;
    const int width = wide ? std::clamp(mainWindow->prefs().userListWidth, preferences::minUserListWidth,
                                        splitBox->width() / 2)
                           : preferences::minUserListWidth;
    userBox->setMinimumWidth(wide && userListShown ? width : 0);
    userBox->setMaximumWidth(userListShown ? width : 0);
    handle->setVisible(wide && userListShown);
}

void channeltab::nameToggle()
{
    const QString what = (userListShown ? tr("Hide the members, %1") : tr("Show the members, %1"))
                             .arg(userBox->model()->rowCount());
    toggleButton->setAccessibleName(what);
    toggleButton->setToolTip(what);
}

bool channeltab::eventFilter(QObject *watched, QEvent *event)
{
    // The user may have changed the width in another tab, too.
    if (watched == splitBox && (event->type() == QEvent::Resize || event->type() == QEvent::Show))
        fitUserBox();
    return irctab::eventFilter(watched, event);
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
