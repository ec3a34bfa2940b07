// SPDX-License-Identifier: MIT
//
// The whole program between a server and a user who do anything. A line of the input comes from the server,
// unless it begins with one of these signs. Parlo handles it at the next "~" or ".".
//
//   >TEXT   the user types a text
//   ^KEY    presses a key
//   =INDEX  selects a tab
//   +       connects again
//   &       connects again, by an address without TLS
//   *       and by one with TLS and an account, which this server has not; the user knows the password
//   %COUNT  so many seconds pass for the link
//   -       the server closes the connection
//   !BYTES  sends a piece of a line
//   ~       runs the event loop until nothing is pending
//   .       runs one turn of it
//   x       deletes the window

#include "fuzz.h"

#include "../user.h"
#include "countdown.h"
#include "preferences.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QElapsedTimer>
#include <QInputDialog>
#include <QLineEdit>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

/// Runs the event loop until nothing is pending. A tab closes after 1 ms.
static void settle()
{
    QTest::qWait(1);
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) {
    }
}

constexpr auto password = "s3cret"_L1;

/// What a session by address writes unasked, as often as the server makes it to.
static bool isNegotiation(const QByteArray &line)
{
    const QByteArrayList words{"CAP ", "NICK ", "USER parlo 0 * :", "JOIN ", "PING :parlo"};
    return std::any_of(words.begin(), words.end(), [&](auto &word) { return line.startsWith(word); });
}

/// Counts the lines that Parlo wrote to a client, `written`, without a reason. Reasons are the registration, `pings`, and
/// requests for the version, of which `versions` may be answered.
static qsizetype unasked(const QByteArray &written, qsizetype maxLine, qsizetype &pings, qsizetype &versions)
{
    require(!written.contains(QByteArray(password.data())), "no password leaves without TLS");
    if (written.startsWith('\x16'))
        return 0;
    QByteArrayList registration{"USER parlo ", "NICK ", "JOIN #parlo"};
    const bool byAddress = written.startsWith("CAP ");
    qsizetype count = 0;
    for (const QByteArray &line : linesOnWire(written)) {
        require(!byAddress || line.size() + 2 <= maxLine, "a line is no longer than the server takes");
        require(!byAddress || line.isValidUtf8(), "a line is UTF-8");
        if (!registration.isEmpty() && line.startsWith(registration.first()))
            registration.removeFirst();
        else if (line.startsWith("PONG ") && pings > 0)
            --pings;
        else if (line.startsWith("NOTICE ") && line.endsWith('\1') && versions > 0 &&
                 (byAddress || line.endsWith(" :\1VERSION Parlo 0.2\1")))
            --versions;
        else if (byAddress && isNegotiation(line))
            continue;
        else
            ++count;
    }
    return count;
}

void fuzz(const QByteArray &input)
{
    QElapsedTimer clock;
    clock.start();
    QTcpServer server;
    require(server.listen(QHostAddress::LocalHost), "the server listens");
    const QString again = u"/server 127.0.0.1 %1"_s.arg(server.serverPort());
    const QString plain = u"/server irc://127.0.0.1:%1/#parlo"_s.arg(server.serverPort());
    const QString encrypted = u"/server ircs://ada@127.0.0.1:%1"_s.arg(server.serverPort());
    countdown::hold();
    QTimer prompts;
    prompts.callOnTimeout([] {
        if (auto *prompt = qobject_cast<QInputDialog *>(QApplication::activeModalWidget())) {
            prompt->setTextValue(password);
            prompt->accept();
        }
    });
    prompts.start(5);
    QList<QTcpSocket *> clients;
    QByteArray sent;
    user person;
    preferences wanted;
    wanted.highlights = {u"lunch"_s};
    wanted.ignored = {u"eve!*@*"_s};
    wanted.logs = true;
    wanted.save(u"parlo"_s, {});
    person.connectTo(server.serverPort(), u"me"_s, u"#parlo"_s);
    tabbar *bar = person.window()->tabBar;
    const QStackedWidget *pages = person.window()->widgetStack;
    const auto turn = [&] {
        settle();
        while (server.hasPendingConnections())
            clients.append(server.nextPendingConnection());
    };
    const auto send = [&](const QByteArray &bytes) {
        clients.last()->write(bytes);
        sent += bytes;
    };
    const auto type = [pages](const QString &text) {
        auto *line = pages->currentWidget()->findChild<QLineEdit *>();
        line->setText(text);
        QTest::keyClick(line, Qt::Key_Return);
    };
    const auto click = [bar](int index) {
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(index).center());
    };
    const QHash<char, std::function<void(const QByteArray &)>> signs{
        {'>', [&](auto &text) { type(QString::fromUtf8(text)); }},
        {'^', [&](auto &key) { person.press({}, QString::fromLatin1(key).section(u' ', 0, 0)); }},
        {'=', [&](auto &index) { click(index.toInt()); }},
        {'+', [&](auto &) { type(again); }},
        {'&', [&](auto &) { type(plain); }},
        {'*', [&](auto &) { type(encrypted); }},
        {'%', [&](auto &seconds) { countdown::pass(1000 * qBound(0, seconds.toInt(), 1000)); }},
        {'-', [&](auto &) { clients.last()->disconnectFromHost(); }},
        {'!', [&](auto &bytes) { send(bytes); }},
        {'~', [&](auto &) { turn(); }},
        {'.', [&](auto &) { QCoreApplication::processEvents(); }},
    };
    turn();
    qsizetype typed = 0;
    for (const QByteArray &line : input.split('\n')) {
        if (line.startsWith('x'))
            return;
        // A long text goes out in pieces (see textsplitter).
        typed += line.startsWith('>') || line.startsWith('^') ? 8 : 0;
        const auto act = signs.find(line.isEmpty() ? '\0' : line.front());
        act == signs.end() ? send(line + '\n') : (*act)(line.mid(1));
    }
    turn();
    // Parlo answers five in ten seconds (see ircsession).
    qsizetype versions = 5 * (1 + clock.elapsed() / 10'000);
    qsizetype pings = sent.count("PING");
    for (QTcpSocket *client : clients)
        typed -= unasked(client->readAll(), sent.contains("LINELEN=") ? 8192 : 512, pings, versions);
    require(typed >= 0, "no line is written unasked");
    require(bar->count() == pages->count(), "each tab has a page");
}
