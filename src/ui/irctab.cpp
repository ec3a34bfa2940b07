// SPDX-License-Identifier: MIT
#include "irctab.h"

#include "box.h"
#include "chatinput.h"
#include "event.h"
#include "findbar.h"
#include "formatting.h"
#include "ircmode.h"
#include "ircuser.h"
#include "ircview.h"
#include "isupport.h"
#include "lineend.h"
#include "linkwalk.h"
#include "manners.h"
#include "tabbar.h"
#include "tabwindow.h"

#include <QDateTime>
#include <QEvent>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

/// The maximum of nicks that are remembered for completion.
constexpr qsizetype maxSpeakers = 50;
/// No name in a line of 512 bytes (RFC 1459, 2.3) is longer.
constexpr qsizetype maxShown = 512;

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
      m_manner(&manners::classic()),
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
    view->setAccessibleName(tr("Conversation with %1").arg(shownName()));
    parent->layout()->addWidget(view);
}

void irctab::addInput(usercommands::place where, std::function<QStringList()> nicks)
{
    auto *search = new findbar(view, page);
    page->layout()->addWidget(search);
    // Only the page in front is visible, and shortcuts of hidden widgets do nothing.
    connect(new QShortcut(QKeySequence::Find, page), &QShortcut::activated, search, &findbar::open);
    auto *links = new linkwalk(view);
    connect(new QShortcut(Qt::CTRL | Qt::Key_L, page), &QShortcut::activated, links, [this, links] {
        if (m_manner->showsLinks)
            links->step();
    });

    auto *line =
        new chatinput(page, [this, where, nicks = std::move(nicks)] { return words(where, nicks()); });
    line->setAccessibleName(tr("Message to %1").arg(shownName()));
    input = line;
    input->installEventFilter(this);
    connect(input, &QLineEdit::returnPressed, this, &irctab::userInput);
    connect(line, &chatinput::pageWanted, view, &ircview::scrollPage);
    connect(search, &findbar::closed, input, qOverload<>(&QWidget::setFocus));
    connect(links, &linkwalk::left, input, qOverload<>(&QWidget::setFocus));
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
    // The labels are only what the names look like.
    for (const QString &tab : mainWindow->tabBar->names()) {
        if (rules->isChannel(tab))
            nicks.append(tab);
    }
    return nicks + usercommands::wordsIn(where, m_manner->moreCommands);
}

void irctab::follow(const isupport &serverRules, const manners &sessionManner, const ircuser & /*we*/)
{
    rules = &serverRules;
    m_manner = &sessionManner;
    view->manner = m_manner;
    mainWindow->tabBar->setLabel(tabId, shownName());
    view->setAccessibleName(tr("Conversation with %1").arg(shownName()));
    input->setAccessibleName(tr("Message to %1").arg(shownName()));
}

QString irctab::shownName() const
{
    return m_manner->plainFields ? unformatted(name.left(maxShown)) : name;
}

void irctab::setState(const QString &text)
{
    state = unformatted(text.left(maxShown));
    input->setAccessibleDescription(state);
    showState();
}

// The line would cut its end, and both ends say what matters.
void irctab::showState()
{
    const int room = input->contentsRect().width() - 2 * input->fontMetrics().averageCharWidth();
    input->setPlaceholderText(input->fontMetrics().elidedText(state, Qt::ElideMiddle, room));
}

bool irctab::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == input && (event->type() == QEvent::Resize || event->type() == QEvent::FontChange))
        showState();
    return QWidget::eventFilter(watched, event);
}

void irctab::mindLines(std::function<qsizetype(const QString &)> pieces,
                       const std::function<void(const QStringList &)> &send)
{
    auto *line = qobject_cast<chatinput *>(input);
    line->mindLines([this, pieces = std::move(pieces)](const QString &text) {
        return m_manner->mindsSending ? pieces(text) : -1;
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
    if (what.forUs && what.isTalk())
        view->markNext();
    view->hideNext(what.ignored);
    if (what.ours || what.old || what.ignored)
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

void irctab::showPast(const QList<pastline> &past)
{
    view->showPast(past);
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
