// SPDX-License-Identifier: MIT
#include "app/parlo.h"

#include "platform/box.h"
#include "platform/resource.h"
#include "session/ircsession.h"
#include "ui/tabbar.h"

#include <QStackedWidget>
#include <QVBoxLayout>

parlo::parlo(QWidget *parent, const char *name, Qt::WindowFlags flags) : QMainWindow(parent, flags)
{
    setObjectName(QLatin1StringView(name));
    setWindowIcon(Resource::loadPixmap(QStringLiteral("Parlo")));
    setWindowTitle(tr("Parlo v0.2"));
    mainBox = new QWidget(this);
    widgetStack = new QStackedWidget(mainBox);
    tabBar = new tabbar(mainBox);
    tabBar->setShape(QTabBar::RoundedSouth);
    tabBar->show();
    auto *column = box<QVBoxLayout>(mainBox);
    column->addWidget(widgetStack);
    column->addWidget(tabBar);
    setCentralWidget(mainBox);
    session = std::make_unique<ircsession>(this);
    session->showConnectDialog();
}

parlo::~parlo() = default;
