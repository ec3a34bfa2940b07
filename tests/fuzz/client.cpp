// SPDX-License-Identifier: MIT
//
// The whole program between a server and a user who have lost their minds. A line of the input comes from the
// server, unless it begins with one of the signs below. Bytes wait until "~".

#include "fuzz.h"

#include "../user.h"
#include "parlo.h"
#include "tabbar.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QKeySequence>
#include <QLineEdit>
#include <QStackedWidget>
#include <QTcpServer>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

/// Until nothing is left to do; tabs close 1 ms after they were asked to.
static void settle()
{
    QEventLoop loop;
    QTimer::singleShot(1, &loop, &QEventLoop::quit);
    loop.exec();
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) {
    }
}

void fuzz(const QByteArray &input)
{
    QTcpServer server;
    require(server.listen(QHostAddress::LocalHost), "the server listens");
    const QString again = u"/server 127.0.0.1 %1"_s.arg(server.serverPort());
    QList<QTcpSocket *> clients;
    user person;
    person.connectTo(server.serverPort(), u"me"_s, u"#parlo"_s);
    tabbar *bar = person.window()->tabBar;
    const QStackedWidget *pages = person.window()->widgetStack;
    const auto turn = [&] {
        settle();
        while (server.hasPendingConnections())
            clients.append(server.nextPendingConnection());
    };
    const auto type = [pages](const QString &text) {
        auto *line = pages->currentWidget()->findChild<QLineEdit *>();
        line->setText(text);
        QTest::keyClick(line, Qt::Key_Return);
    };
    const auto press = [](const QKeySequence &keys) {
        // QTest has no others.
        const bool known =
            !keys.isEmpty() && ((keys[0].key() >= Qt::Key_Space && keys[0].key() <= Qt::Key_AsciiTilde) ||
                                (keys[0].key() >= Qt::Key_Escape && keys[0].key() <= Qt::Key_PageDown));
        if (known && QApplication::focusWidget() != nullptr)
            QTest::keyClick(QApplication::focusWidget(), keys[0].key(), keys[0].keyboardModifiers());
    };
    turn();
    const QByteArrayList lines = input.split('\n');
    for (const QByteArray &line : lines) {
        const QByteArray rest = line.mid(1);
        QTcpSocket *client = clients.last();
        switch (line.isEmpty() ? '\0' : line.front()) {
        case '>': // the user types
            type(QString::fromUtf8(rest));
            break;
        case '^': // the user presses keys
            press(QKeySequence::fromString(QString::fromLatin1(rest)));
            break;
        case '=': // selects a tab
            QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(rest.toInt()).center());
            break;
        case '+': // connects anew
            type(again);
            break;
        case '-': // the server closes the connection
            client->disconnectFromHost();
            break;
        case '!': // sends a piece of a line
            client->write(rest);
            break;
        case '~': // what waits is done
            turn();
            break;
        case 'x': // the window goes
            return;
        default:
            client->write(line + '\n');
        }
    }
    turn();
    qsizetype written = 0;
    for (QTcpSocket *client : clients)
        written += linesOnWire(client->readAll());
    require(written <= lines.size() + 3 * clients.size(), "no line is written unasked");
    require(bar->count() == pages->count(), "each tab has a page");
}
