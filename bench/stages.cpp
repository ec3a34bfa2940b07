// SPDX-License-Identifier: MIT
//
// Measures each stage of handling a line, and how long the window is blocked, in one process, offscreen.
// Prints one figure per line: name, value, unit. ./dev bench runs this several times and makes a table of it.

#include "../tests/user.h"
#include "channeltab.h"
#include "ircchannel.h"
#include "ircmessage.h"
#include "ircuserbox.h"
#include "ircview.h"
#include "isupport.h"
#include "parlo.h"
#include "richline.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QStackedWidget>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QTimer>

#include <functional>
#include <malloc.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int manyLines = 100'000;
constexpr int members = 5'000;

void print(const char *name, double value, const char *unit)
{
    std::printf("%s\t%.3f\t%s\n", name, value, unit);
    std::fflush(stdout);
}

double microseconds(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1000;
}

double milliseconds(const std::function<void()> &work)
{
    return microseconds(work) / 1000;
}

void until(const std::function<bool()> &condition)
{
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

/// Ordinary chat: 20 to 120 characters from 50 nicks, one line in ten with a colour or bold.
QStringList talk(int lines)
{
    const QStringList words = u"the quick brown fox jumps over a lazy dog while nobody looks at it "
                              "and everything runs as well as it ever did"_s.split(u' ');
    quint32 seed = 1;
    const auto random = [&seed](quint32 below) {
        seed = seed * 1664525 + 1013904223;
        return (seed >> 8) % below;
    };
    QStringList all;
    for (int i = 0; i < lines; ++i) {
        QString text;
        const qsizetype length = 20 + random(100);
        while (text.size() < length)
            text += words.at(random(static_cast<quint32>(words.size()))) + u' ';
        if (random(10) == 0)
            text = u"\3" + QString::number(2 + random(12)) + text.left(9) + u"\3\2" + text.mid(9) + u"\2";
        all.append(u":nick%1!user@host.example.org PRIVMSG #parlo :%2\r\n"_qs.arg(random(50)).arg(text));
    }
    return all;
}

size_t heap()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void parts(const QStringList &lines)
{
    qsizetype words = 0;
    print("words", microseconds([&] {
                       for (const QString &line : lines)
                           words += ircmessage(line).paramCount();
                   }) / static_cast<double>(lines.size()),
          "us/line");
    QStringList texts;
    for (const QString &line : lines)
        texts.append(ircmessage(line).paramsFrom(1, true));
    qsizetype characters = 0;
    print("control codes and markup", microseconds([&] {
                                          for (const QString &text : std::as_const(texts))
                                              characters += richline(ircview::ircToHtml(text)).text().size();
                                      }) / static_cast<double>(texts.size()),
          "us/line");

    ircview view(nullptr);
    view.resize(240, 320);
    view.show();
    const size_t before = heap();
    const auto add = [&](qsizetype from, qsizetype to) {
        return microseconds([&] {
            for (qsizetype i = from; i < to; ++i) {
                view.privmsg(u"nick"_s, texts.at(i));
                if (i % 2000 == 1999)
                    QCoreApplication::processEvents();
            }
            QCoreApplication::processEvents();
        });
    };
    const qsizetype tenth = texts.size() / 10;
    print("view, first tenth of the lines", add(0, tenth) / static_cast<double>(tenth), "us/line");
    add(tenth, 9 * tenth);
    print("view, last tenth of the lines", add(9 * tenth, texts.size()) / static_cast<double>(tenth),
          "us/line");
    print("view, memory", static_cast<double>(heap() - before) / static_cast<double>(texts.size()), "B/line");
}

void roster()
{
    ircchannel channel(u"#parlo"_s, isupport::classic());
    ircuserbox box(nullptr);
    box.show();
    print("names of the big channel", milliseconds([&] {
              for (int i = 0; i < members; i += 50) {
                  QStringList names;
                  for (int j = i; j < i + 50; ++j)
                      names.append((j % 100 == 0 ? u"@user" : u"user") + QString::number(j * 7919 % members));
                  channel.names(&names);
              }
              channel.endNames();
              box.fill(&channel);
              QCoreApplication::processEvents();
          }),
          "ms");
    print("500 joins and 500 quits there", milliseconds([&] {
              for (int i = 0; i < 500; ++i) {
                  const ircuser user(u"guest%1!u@h"_qs.arg(i));
                  channel.join(&user);
                  box.fill(&channel);
              }
              QCoreApplication::processEvents();
              for (int i = 0; i < 500; ++i) {
                  const ircuser user(u"guest%1!u@h"_qs.arg(i));
                  channel.remove(&user);
                  box.fill(&channel);
              }
              QCoreApplication::processEvents();
          }),
          "ms");
}

/// The whole program and a server that sends as fast as it can.
void flood(const QStringList &lines)
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    user person;
    person.connectTo(server.serverPort(), u"me"_s, {});
    until([&] { return server.hasPendingConnections(); });
    QTcpSocket *peer = server.nextPendingConnection();
    peer->write(":me!u@h JOIN #parlo\r\n");
    const QString channel = u"#parlo"_s;
    until([&] { return person.tabs().contains(channel); });
    QWidget *page = person.window()->widgetStack->currentWidget();
    auto *view = page->findChild<ircview *>();

    // The longest time between two turns of the event loop, measured by a timer that is always due.
    QElapsedTimer turn;
    qint64 longest = 0;
    QTimer always;
    QObject::connect(&always, &QTimer::timeout, [&] { longest = qMax(longest, turn.restart()); });
    QByteArray bytes = lines.join(QString()).toLatin1();
    // The server's side of the connection moves to a thread of its own.
    QThread thread;
    peer->setParent(nullptr);
    peer->moveToThread(&thread);
    QObject::connect(&thread, &QThread::started, peer, [peer, bytes] { peer->write(bytes); });
    QObject::connect(&thread, &QThread::finished, peer, &QObject::deleteLater);
    turn.start();
    always.start(0);
    const double ms = milliseconds([&] {
        thread.start();
        until([&] { return view->lines().end() >= lines.size(); });
    });
    print("flood, from socket to screen", ms * 1000 / static_cast<double>(lines.size()), "us/line");
    print("flood, longest turn of the event loop", static_cast<double>(longest), "ms");
    always.stop();

    QCoreApplication::processEvents();
    print("resize", milliseconds([&] {
              person.window()->resize(480, 640);
              QCoreApplication::processEvents();
          }),
          "ms");
    print("change of tab, there and back", milliseconds([&] {
              person.select(u"Server"_s);
              QCoreApplication::processEvents();
              person.select(channel);
              QCoreApplication::processEvents();
          }),
          "ms");
    print("toggle of the member list", milliseconds([&] {
              page->findChild<QPushButton *>()->click();
              QCoreApplication::processEvents();
          }),
          "ms");
    print("search for what is not there", milliseconds([&] { view->findText(u"nowhere"_s, false); }), "ms");
    thread.quit();
    thread.wait();
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication app(argc, argv);
    const QStringList lines = talk(manyLines);
    parts(lines);
    roster();
    flood(lines);
    return 0;
}
