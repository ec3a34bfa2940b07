// SPDX-License-Identifier: MIT
#include "ui/irctab.h"

#include "app/parlo.h"
#include "irc/ircmode.h"
#include "irc/ircuser.h"
#include "platform/box.h"
#include "platform/inputline.h"
#include "ui/ircview.h"
#include "ui/tabbar.h"

#include <QStackedWidget>
#include <QVBoxLayout>

irctab::irctab(parlo *window, QString tabName)
    : QWidget(window->widgetStack), mainWindow(window), name(std::move(tabName))
{
    // A child that was never hidden would be shown with its parent, over the pages.
    hide();
    tabId = mainWindow->tabBar->addTab(name);
    mainWindow->tabBar->setCurrentTab(tabId);
    page = new QWidget(mainWindow->widgetStack);
    box<QVBoxLayout>(page);
    mainWindow->widgetStack->addWidget(page);
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
    parent->layout()->addWidget(view);
}

void irctab::addInput()
{
    input = new inputline(page);
    connect(input, &QLineEdit::returnPressed, this, &irctab::userInput);
    page->layout()->addWidget(input);
    input->setFocus();
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

void irctab::addRawLine(QString line)
{
    while (line.endsWith(u'\n') || line.endsWith(u'\r'))
        line.chop(1);
    view->addLine(line);
}

void irctab::quit(ircuser *who, const QString &reason)
{
    view->quit(who->nick(), reason);
}

void irctab::modes(ircmode *m)
{
    if (sameName(m->target(), name))
        view->modes(m);
}

void irctab::nick(const QString &oldNick, const QString &newNick)
{
    view->nick(oldNick, newNick);
}

void irctab::userInput()
{
    const QString text = input->text();
    Q_EMIT gotUserInput(text, this);
    input->clear();
}

void irctab::tabBarClicked(int id)
{
    if (id != tabId)
        return;
    mainWindow->widgetStack->setCurrentWidget(page);
    input->setFocus();
    view->scrollToBottom();
    Q_EMIT amTopTab(this);
}
