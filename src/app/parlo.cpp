// SPDX-License-Identifier: MIT
#include "parlo.h"

#include "box.h"
#include "channeltab.h"
#include "chatinput.h"
#include "ircsession.h"
#include "logview.h"
#include "resource.h"
#include "settingsbox.h"
#include "tabbar.h"
#include "tabmenu.h"
#include "version.h"

#include <QApplication>
#include <QFontInfo>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

parlo::parlo(QWidget *parent, const char *name, Qt::WindowFlags flags, const QString &address)
    : tabwindow(parent, flags)
{
    setObjectName(QLatin1StringView(name));
    setWindowIcon(Resource::loadPixmap(u"Parlo"_s));
    setWindowTitle(u"Parlo v" + parloVersion);
    mainBox = new QWidget(this);
    widgetStack = new QStackedWidget(mainBox);
    tabBar = new tabbar(mainBox);
    tabBar->setShape(QTabBar::RoundedSouth);
    tabBar->show();
    connect(new tabmenu(tabBar), &tabmenu::settingsWanted, this, &parlo::openSettings);
    auto *column = box<QVBoxLayout>(mainBox);
    column->addWidget(widgetStack);
    column->addWidget(tabBar);
    setCentralWidget(mainBox);
    addViewKeys();
    applyFontSize();
    if (prefs().windowSize.isValid())
        resize(prefs().windowSize);
    session = std::make_unique<ircsession>(this);
    session->showConnectDialog(address);
}

parlo::~parlo() = default;

void parlo::addViewKeys()
{
    const auto add = [this](QKeyCombination keys, auto act) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, act);
    };
    for (const Qt::Key plus : {Qt::Key_Plus, Qt::Key_Equal})
        add(Qt::CTRL | plus, [this] { zoom(1); });
    add(Qt::CTRL | Qt::Key_Minus, [this] { zoom(-1); });
    add(Qt::CTRL | Qt::Key_0, [this] { setFontSize(0); });
    add(Qt::CTRL | Qt::Key_T, [this] {
        prefer(&preferences::times, !prefs().times);
        for (logview *view : findChildren<logview *>())
            view->setTimes(prefs().times);
    });
    add(Qt::CTRL | Qt::Key_Comma, [this] { openSettings(); });
}

void parlo::openSettings()
{
    if (settings != nullptr)
        return settings->activateWindow();
    settings = new settingsbox(prefs(), this);
    connect(settings, &settingsbox::changed, this, &parlo::applySettings);
    connect(settings, &QDialog::finished, this, [this] {
        if (auto *input = widgetStack->currentWidget()->findChild<chatinput *>())
            input->setFocus();
    });
    settings->open();
}

void parlo::applySettings(preferences wanted)
{
    const preferences before = prefs();
    wanted.ignored = before.ignored; // not on that page
    keeper()->change(wanted);
    applyFontSize();
    for (logview *view : findChildren<logview *>()) {
        if (wanted.times != before.times)
            view->setTimes(wanted.times);
        view->setScrollback(wanted.scrollback);
    }
    // A tab may differ from the others until the user wants all to be the same.
    for (channeltab *tab : findChildren<channeltab *>()) {
        if (wanted.userListShown != before.userListShown && tab->userListShown != wanted.userListShown)
            tab->showHideUserlist();
    }
}

void parlo::zoom(int steps)
{
    const int size = prefs().fontSize == 0 ? QFontInfo(font()).pointSize() : prefs().fontSize;
    setFontSize(preferences::stepped(size, steps));
}

void parlo::setFontSize(int points)
{
    prefer(&preferences::fontSize, points);
    applyFontSize();
}

void parlo::applyFontSize()
{
    QFont wanted = font();
    if (prefs().fontSize != 0)
        wanted.setPointSize(prefs().fontSize);
    QApplication::setFont(wanted, "ircview");
}
