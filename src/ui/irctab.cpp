// SPDX-License-Identifier: MIT
#include "irctab.h"

#include "box.h"
#include "chatinput.h"
#include "event.h"
#include "findbar.h"
#include "ircmode.h"
#include "ircuser.h"
#include "ircview.h"
#include "isupport.h"
#include "lineend.h"
#include "manners.h"
#include "tabbar.h"
#include "tabwindow.h"

#include <QDateTime>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

/// The maximum of nicks that are remembered for completion.
constexpr qsizetype maxSpeakers = 50;

tabbar::activity activityOf(const event &what)
{
    if (what.forUs)
        return tabbar::activity::personal;
    return what.isTalk() ? tabbar::activity::message : tabbar::activity::event;
}

} // namespace

irctab::irctab(tabwindow *window, QString tabName, opening how)
    : QWidget(window->widgetStack),
      mainWindow(window),
      rules(&isupport::classic()),
      name(std::move(tabName)),
      manner(&manners::classic()),
      opened(how)
{
    // Otherwise Qt would show this widget with its parent, on top of the pages.
    hide();
    tabId = mainWindow->tabBar->addTab(name);
    if (opened == opening::front)
        mainWindow->tabBar->setCurrentTab(tabId);
    page = new QWidget(mainWindow->widgetStack);
    box<QVBoxLayout>(page);
    mainWindow->widgetStack->addWidget(page);
    if (opened == opening::front)
        mainWindow->widgetStack->setCurrentWidget(page);
    connect(mainWindow->tabBar, &tabbar::selected, this, &irctab::tabBarClicked);
    Q_EMIT amTopTab(this);
}

irctab::~irctab()
{
    mainWindow->widgetStack->removeWidget(page);
    delete page;
    mainWindow->tabBar->removeTab(tabId);
}

void irctab::addView(QWidget *parent)
{
    view = new ircview(parent);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    view->setTimes(mainWindow->prefs().times);
    view->setScrollback(mainWindow->prefs().scrollback);
    view->setAccessibleName(tr("Conversation with %1").arg(name));
    parent->layout()->addWidget(view);
}

void irctab::addInput(usercommands::place where, std::function<QStringList()> nicks)
{
    auto *search = new findbar(view, page);
    page->layout()->addWidget(search);
    // Only the page in front is visible, and shortcuts of hidden widgets do nothing.
    connect(new QShortcut(QKeySequence::Find, page), &QShortcut::activated, search, &findbar::open);

    auto *line =
        new chatinput(page, [this, where, nicks = std::move(nicks)] { return words(where, nicks()); });
    line->setAccessibleName(tr("Message to %1").arg(name));
    input = line;
    connect(input, &QLineEdit::returnPressed, this, &irctab::userInput);
    connect(line, &chatinput::pageWanted, view, &ircview::scrollPage);
    connect(search, &findbar::closed, input, qOverload<>(&QWidget::setFocus));
    page->layout()->addWidget(input);
    if (opened == opening::front)
        input->setFocus();
}

QStringList irctab::words(usercommands::place where, QStringList nicks) const
{
    for (const QString &speaker : speakers) {
        const qsizetype place = nicks.indexOf(speaker);
        if (place >= 0)
            nicks.move(place, 0);
    }
    for (const QString &label : mainWindow->tabBar->labels()) {
        if (rules->isChannel(label))
            nicks.append(label);
    }
    return nicks + usercommands::wordsIn(where, manner->moreCommands);
}

void irctab::follow(const isupport &serverRules, const manners &sessionManner)
{
    rules = &serverRules;
    manner = &sessionManner;
    view->manner = manner;
}

void irctab::mindLines(std::function<qsizetype(const QString &)> pieces,
                       const std::function<void(const QStringList &)> &send)
{
    auto *line = qobject_cast<chatinput *>(input);
    line->mindLines([this, pieces = std::move(pieces)](const QString &text) {
        return manner->mindsSending ? pieces(text) : -1;
    });
    connect(line, &chatinput::gotLines, this, [this, send](const QStringList &lines) {
        inputRefused = false;
        send(lines);
        if (!inputRefused)
            input->clear();
    });
}

bool irctab::isInFront() const
{
    return mainWindow->tabBar->currentTab() == tabId;
}

void irctab::happened(const struct event &what)
{
    if (what.old)
        view->stampNext(QDateTime::fromMSecsSinceEpoch(what.when));
    if (what.ours || what.old)
        return;
    mainWindow->tabBar->addActivity(tabId, activityOf(what));
    const QString nick = what.who.nick();
    if (!what.isTalk() || (!speakers.isEmpty() && speakers.last() == nick))
        return;
    speakers.removeOne(nick);
    speakers.append(nick);
    if (speakers.size() > maxSpeakers)
        speakers.removeFirst();
}

void irctab::notice(const QString &nick, const QString &text)
{
    view->notice(nick, text);
}

void irctab::message(const QString &text)
{
    view->message(text);
}

void irctab::privmsg(const QString &nick, const QString &text)
{
    view->privmsg(nick, text);
}

void irctab::action(const QString &nick, const QString &text)
{
    view->action(nick, text);
}

void irctab::addRawLine(const QString &line)
{
    view->addLine(withoutLineEnd(line));
}

void irctab::quit(ircuser *who, const QString &reason)
{
    view->quit(who->nick(), reason);
}

void irctab::modes(ircmode *m)
{
    if (rules->same(m->target(), name))
        view->modes(m);
}

void irctab::nick(const QString &oldNick, const QString &newNick)
{
    view->nick(oldNick, newNick);
}

void irctab::userInput()
{
    const QString text = input->text();
    inputRefused = false;
    if (view->keepsPlace())
        view->scrollToBottom();
    Q_EMIT gotUserInput(text, this);
    if (!inputRefused)
        input->clear();
}

void irctab::refuseInput(const QString &why)
{
    view->message(why);
    inputRefused = true;
}

void irctab::tabBarClicked(int id)
{
    if (id != tabId)
        return;
    mainWindow->widgetStack->setCurrentWidget(page);
    if (!mainWindow->tabBar->frontStays())
        input->setFocus();
    view->showNewest();
    Q_EMIT amTopTab(this);
}
