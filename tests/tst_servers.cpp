// SPDX-License-Identifier: MIT
//
// Sessions by address with real servers, which the test starts itself, and with bad ends of TLS: what no script can play.

#include "certificatecheck.h"
#include "connection.h"
#include "countdown.h"
#include "linkmemory.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QMap<QString, QString> commandLines{
    {u"ngircd"_s, u"-n -f $DIR/ngircd.conf"_s},
    {u"inspircd"_s, u"--nofork --nopid --config $DIR/inspircd.conf"_s},
    {u"atheme-services"_s,
     u"-n -c $DIR/atheme-services.conf -D $DIR/atheme -l $DIR/atheme/log -p $DIR/atheme/pid"_s},
    {u"znc"_s, u"-f -d $DIR"_s}};

struct memory : linkmemory
{
    QString pin(const QString &host, quint16 port) const override
    {
        return pins.value(certificatecheck::pinKey(host, port));
    }
    bool setPin(const QString &host, quint16 port, const QString &fingerprint) override
    {
        pins.insert(certificatecheck::pinKey(host, port), fingerprint);
        return writable;
    }
    stspolicies policies() const override { return kept; }
    void setPolicies(const stspolicies &policies) override { kept = policies; }

    QMap<QString, QString> pins;
    stspolicies kept;
    bool writable = true;
};

/// A connection, with all that it says and hears.
class client : public QObject
{
public:
    client()
    {
        conn.keeper.memory = &known;
        const auto keep = [this](const QString &text) { texts.append(text.trimmed()); };
        connect(&conn, &connection::status, this, keep);
        connect(&conn, &connection::errormsg, this, keep);
        connect(&conn, &connection::gotRawLine, this, keep);
    }
    void go(const QString &address, const destination &details = {}, const QString &nick = u"ada"_s)
    {
        conn.details = details;
        conn.connectToServer(address, 0, nick, {}, {});
    }
    /// Whether such a text comes; those before it do not count any more.
    bool hears(const QString &pattern)
    {
        const QRegularExpression wanted(pattern);
        const bool found = QTest::qWaitFor(
            [&] {
                while (!texts.isEmpty() && !wanted.match(texts.first()).hasMatch())
                    before.append(texts.takeFirst());
                return !texts.isEmpty();
            },
            20'000);
        if (!found)
            qWarning().noquote() << "no" << pattern << "in\n" << before.join(u'\n');
        else
            before.append(texts.takeFirst());
        return found;
    }

    memory known;
    connection conn;
    QStringList texts;
    QStringList before;
};

} // namespace

class tst_servers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void certificates_data();
    void certificates();
    void trust();
    void otherHost();
    void transportSecurity();
    void ngircd();
    void inspircd();
    void znc();

private:
    void openssl(const QString &arguments);
    /// Makes `name`.pem, `name`.key and `name`both.pem; who has no authority vouches for itself.
    void issue(const QString &name, const QString &names, int days = 2, bool byAuthority = true);
    QString file(const QString &name) const { return dir.filePath(name); }
    /// Starts a server with its file of tests/servers, in which $DIR is our folder and $1 the first of `ports`, and waits
    /// until it listens at `port`, if that is given. As root it is nobody, and in any case it goes with us.
    void start(const QString &program, const QList<quint16> &ports, quint16 port = 0);
    static quint16 freePort();
    /// A server whose certificate is `name`; an empty one has none, and says nothing. "greeting" speaks plain IRC,
    /// "outdated" an old TLS.
    std::unique_ptr<QTcpServer> serve(const QString &name);
    static QByteArray heardBy(QTcpServer &server);

    QTemporaryDir dir;
    std::vector<std::unique_ptr<QProcess>> programs;
};

void tst_servers::openssl(const QString &arguments)
{
    QProcess process;
    process.setWorkingDirectory(dir.path());
    process.start(u"openssl"_s, arguments.split(u' '));
    QVERIFY(process.waitForFinished());
    QVERIFY2(process.exitCode() == 0, process.readAllStandardError().constData());
}

void tst_servers::issue(const QString &name, const QString &names, int days, bool byAuthority)
{
    openssl(
        u"req -new -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -subj /CN=%1 -addext subjectAltName=%2 "
        "-keyout %1.key -out %1.csr"_s.arg(name, names));
    openssl(u"x509 -req -copy_extensions copy -in %1.csr -out %1.pem -days %2 "_s.arg(name).arg(days) +
            (byAuthority ? u"-CA ca.pem -CAkey ca.key"_s : u"-key %1.key"_s.arg(name)));
    QFile both(file(name + u"both.pem"));
    QVERIFY(both.open(QIODevice::WriteOnly));
    for (const auto *part : {".key", ".pem"}) {
        QFile half(file(name + QLatin1StringView(part)));
        QVERIFY(half.open(QIODevice::ReadOnly));
        both.write(half.readAll());
    }
    QVERIFY(both.setPermissions(QFile::ReadOwner | QFile::WriteOwner));
}

void tst_servers::initTestCase()
{
    countdown::hold();
    openssl(
        u"req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -subj /CN=Test -keyout ca.key -out ca.pem"_s);
    const auto here = u"DNS:localhost,IP:127.0.0.1"_s;
    issue(u"good"_s, here);
    issue(u"elsewhere"_s, u"DNS:elsewhere.test"_s);
    issue(u"name"_s, u"DNS:localhost"_s);
    issue(u"expired"_s, here, -1);
    issue(u"early"_s, here);
    QVERIFY(QFile(file(u"index.txt"_s)).open(QIODevice::WriteOnly));
    openssl(u"ca -batch -notext -config %1/servers/ca.conf -cert ca.pem -keyfile ca.key -startdate "
            u"20990101000000Z "
            "-enddate 20990201000000Z -in early.csr -out early.pem"_s.arg(QLatin1StringView(TESTS)));
    issue(u"selfmade"_s, here, 2, false);
    issue(u"selfexpired"_s, u"DNS:elsewhere.test"_s, -1, false);
    issue(u"mine"_s, u"DNS:ada"_s);
    for (const auto &folder : {u"data"_s, u"log"_s, u"run"_s, u"atheme"_s, u"configs"_s})
        QVERIFY(QDir(dir.path()).mkdir(folder));
    QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
    tls.setCaCertificates(QSslCertificate::fromPath(file(u"ca.pem"_s)));
    QSslConfiguration::setDefaultConfiguration(tls);
}

void tst_servers::cleanup()
{
    for (const auto &program : programs) {
        program->kill();
        program->waitForFinished();
    }
    programs.clear();
}

quint16 tst_servers::freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

void tst_servers::start(const QString &program, const QList<quint16> &ports, quint16 port)
{
    QFile in(QStringLiteral(TESTS "/servers/%1.conf").arg(program));
    QFile out(file(program == u"znc" ? u"configs/znc.conf"_s : program + u".conf"));
    QVERIFY(in.open(QIODevice::ReadOnly) && out.open(QIODevice::WriteOnly));
    QByteArray config = in.readAll().replace("$DIR", dir.path().toUtf8());
    for (qsizetype i = 0; i < ports.size(); ++i)
        config.replace(QByteArray("$" + QByteArray::number(i + 1)), QByteArray::number(ports[i]));
    out.write(config);
    out.close();
    QStringList all{u"--pdeathsig"_s, u"KILL"_s};
    if (getuid() == 0) {
        QCOMPARE(QProcess::execute(u"chown"_s, {u"-R"_s, u"nobody:nogroup"_s, dir.path()}), 0);
        all += {u"--reuid=nobody"_s, u"--regid=nogroup"_s, u"--clear-groups"_s};
    }
    QString name = QStandardPaths::findExecutable(program);
    if (name.isEmpty())
        name = u"/usr/sbin/" + program;
    auto process = std::make_unique<QProcess>();
    process->setWorkingDirectory(dir.path());
    process->setStandardOutputFile(file(program + u".out"));
    process->setStandardErrorFile(file(program + u".out"));
    process->start(u"setpriv"_s,
                   all + QStringList{name} +
                       QString(commandLines.value(program)).replace(u"$DIR"_s, dir.path()).split(u' '));
    QVERIFY(process->waitForStarted());
    programs.push_back(std::move(process));
    const auto listens = [port] {
        QTcpSocket probe;
        probe.connectToHost(QHostAddress::LocalHost, port);
        return probe.waitForConnected();
    };
    QTRY_VERIFY_WITH_TIMEOUT(port == 0 || listens(), 20'000);
}

std::unique_ptr<QTcpServer> tst_servers::serve(const QString &name)
{
    if (name.isEmpty() || name == u"greeting") {
        auto plain = std::make_unique<QTcpServer>();
        if (!name.isEmpty())
            connect(plain.get(), &QTcpServer::newConnection, plain.get(), [server = plain.get()] {
                server->nextPendingConnection()->write(":irc.test NOTICE * :*** Looking you up\r\n");
            });
        plain->listen(QHostAddress::LocalHost);
        return plain;
    }
    auto server = std::make_unique<QSslServer>();
    QSslConfiguration tls;
    tls.setLocalCertificateChain(QSslCertificate::fromPath(file(name + u".pem")));
    QFile key(file(name + u".key"));
    if (key.open(QIODevice::ReadOnly))
        tls.setPrivateKey(QSslKey(&key, QSsl::Ec));
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    if (name == u"outdated")
        tls.setProtocol(QSsl::TlsV1_1);
    QT_WARNING_POP
    server->setSslConfiguration(tls);
    server->listen(QHostAddress::LocalHost);
    return server;
}

/// What the last client has sent to `server`, in the clear.
QByteArray tst_servers::heardBy(QTcpServer &server)
{
    QByteArray bytes;
    for (QTcpSocket *socket : server.findChildren<QTcpSocket *>())
        bytes += socket->peek(4096);
    return bytes;
}

// --- certificates ---

void tst_servers::certificates_data()
{
    QTest::addColumn<QString>("certificate");
    QTest::addColumn<QString>("host");
    QTest::addColumn<QString>("said");
    const auto here = u"127.0.0.1"_s;
    const auto selfmade = u"nobody vouches for this certificate. SHA-256 ([0-9A-F]{2}:){31}[0-9A-F]{2} "
                          "To trust it: /trust$"_s;
    QTest::newRow("by address") << u"good"_s << here << u"^Connected, logging in…$"_s;
    QTest::newRow("by name") << u"good"_s << u"localhost"_s << u"^Connected, logging in…$"_s;
    QTest::newRow("unknown authority") << u"selfmade"_s << here << selfmade;
    QTest::newRow("all faults at once") << u"selfexpired"_s << here << selfmade;
    QTest::newRow("other name") << u"elsewhere"_s << here
                                << u"^Not connected: the certificate is for another name$"_s;
    QTest::newRow("expired") << u"expired"_s << here << u"^Not connected: the certificate has expired$"_s;
    QTest::newRow("not yet valid") << u"early"_s << here
                                   << u"^Not connected: the certificate is not valid yet$"_s;
    QTest::newRow("outdated") << u"outdated"_s << here << u"^127.0.0.1 speaks only outdated TLS$"_s;
    QTest::newRow("plain IRC") << u"greeting"_s << here << u"^No TLS on port \\d+ of 127.0.0.1$"_s;
    QTest::newRow("silent") << QString() << here << u"^No TLS on port \\d+ of 127.0.0.1$"_s;
}

void tst_servers::certificates()
{
    QFETCH(const QString, certificate);
    QFETCH(const QString, host);
    QFETCH(const QString, said);
    const auto server = serve(certificate);
    client ada;
    destination with;
    with.password = u"s3cret"_s;
    ada.go(u"ircs://%1:%2"_s.arg(host).arg(server->serverPort()), with);
    QVERIFY(ada.hears(u"^Connecting to "_s + host));
    if (certificate.isEmpty()) {
        QTRY_VERIFY(!heardBy(*server).isEmpty());
        countdown::pass(20'000);
    }
    QVERIFY(ada.hears(said));
    if (certificate == u"good") {
        QTRY_VERIFY(heardBy(*server).startsWith("PASS :s3cret\r\nCAP LS 302\r\n"));
        return;
    }
    QVERIFY(!heardBy(*server).contains("CAP") && !ada.conn.loggedIn);
    // What is refused is not tried again; what is not there yet is.
    QCOMPARE(ada.texts.join(u' ').contains(u"Next try"), said.contains(u" TLS"));
    QCOMPARE(ada.conn.keeper.trust(), said.contains(u"/trust"));
}

void tst_servers::trust()
{
    client ada;
    auto server = serve(u"selfmade"_s);
    const quint16 port = server->serverPort();
    ada.go(u"ircs://127.0.0.1:%1"_s.arg(port));
    QVERIFY(ada.hears(u"nobody vouches"_s));
    QVERIFY(ada.conn.userCommand(u"/trust"_s, u"Server"_s));
    QVERIFY(ada.hears(u"^Connected"_s));
    QCOMPARE(ada.known.pins.size(), 1);
    const auto swap = [&](const QString &name) {
        server.reset();
        server = serve(name);
        server->close();
        QVERIFY(server->listen(QHostAddress::LocalHost, port));
        ada.conn.userCommand(u"/server"_s, u"Server"_s);
    };
    swap(u"selfexpired"_s);
    QVERIFY(ada.hears(u"^Not connected: the certificate has CHANGED .* If you know why: /trust$"_s));
    QVERIFY(!heardBy(*server).contains("CAP"));
    ada.known.writable = false;
    QVERIFY(ada.conn.userCommand(u"/trust"_s, u"Server"_s));
    QVERIFY(ada.hears(u"^The certificate is trusted until Parlo ends: the settings cannot be saved$"_s));
    QVERIFY(ada.hears(u"^Connected"_s));
    swap(u"good"_s);
    QVERIFY(ada.hears(u"^127.0.0.1 has a verified certificate now$"_s));
    swap(u"selfexpired"_s);
    QVERIFY(ada.hears(u"nobody vouches"_s));
}

void tst_servers::otherHost()
{
    client ada;
    const auto server = serve(u"name"_s);
    ada.go(u"ircs://localhost:%1"_s.arg(server->serverPort()));
    QVERIFY(ada.hears(u"^Connected"_s));
    ada.go(u"ircs://127.0.0.1:%1"_s.arg(server->serverPort()));
    QVERIFY(ada.hears(u"is for another name$"_s));
    destination with;
    with.certificateFile = file(u"mine.pem"_s);
    ada.go(u"ircs://localhost:%1"_s.arg(server->serverPort()), with);
    QVERIFY(
        ada.hears(u"^The certificate .*mine.pem cannot be used: it is missing, or others can read it$"_s));
}

void tst_servers::transportSecurity()
{
    client ada;
    const auto plain = serve({});
    const auto server = serve(u"good"_s);
    const auto address = u"irc://localhost:%1"_s.arg(plain->serverPort());
    ada.go(address);
    QTRY_VERIFY(plain->hasPendingConnections());
    plain->nextPendingConnection()->write("CAP * LS :sts=port=" + QByteArray::number(server->serverPort()) +
                                          "\r\n");
    QTRY_VERIFY(server->hasPendingConnections());
    server->nextPendingConnection()->write("CAP * LS :sts=duration=300\r\n:s 001 ada :hi\r\n");
    QVERIFY(ada.hears(u" 001 "_s));
    // From now on, without a word in plain.
    ada.go(address);
    QTRY_VERIFY(server->hasPendingConnections());
    QVERIFY(!plain->hasPendingConnections());
    server->nextPendingConnection()->close();
    // The end of the program is the end of the link, from which the promise counts.
    memory left;
    {
        client bea;
        bea.conn.keeper.memory = &left;
        bea.go(u"ircs://localhost:%1"_s.arg(server->serverPort()));
        QTRY_VERIFY(server->hasPendingConnections());
        server->nextPendingConnection()->write("CAP * LS :sts=duration=300\r\n:s 001 ada :hi\r\n");
        QVERIFY(bea.hears(u" 001 "_s));
        left.kept = {};
    }
    QCOMPARE(left.kept.portFor(u"localhost"_s, QDateTime::currentSecsSinceEpoch()), server->serverPort());
}

// --- real servers ---

void tst_servers::ngircd()
{
    const quint16 port = freePort();
    start(u"ngircd"_s, {freePort(), port}, port);
    for (const auto &host : {u"127.0.0.1"_s, u"localhost"_s}) {
        client ada;
        ada.go(u"ircs://%1:%2/#c"_s.arg(host).arg(port), {}, u"adaadaadaada"_s);
        QVERIFY(ada.hears(u"^adaadaadaada is not allowed here; you are adaadaada$"_s));
        QVERIFY(ada.hears(u"JOIN :?#c"_s));
        QVERIFY(ada.conn.say(u"adaadaada"_s, u"grüße  dich"_s, false));
        QVERIFY(ada.hears(u"PRIVMSG adaadaada :grüße  dich"_s));
        ada.conn.userCommand(u"/quit"_s, {});
        QVERIFY(ada.hears(u"^ERROR"_s));
    }
}

void tst_servers::inspircd()
{
    const quint16 plain = freePort();
    const quint16 tls = freePort();
    const quint16 link = freePort();
    start(u"inspircd"_s, {plain, tls, link}, plain);
    start(u"atheme-services"_s, {link});
    // An account, and the certificate that names it.
    client first;
    first.go(u"irc://127.0.0.1:%1"_s.arg(plain));
    QVERIFY(first.hears(u" 376| 422 "_s));
    QTRY_VERIFY_WITH_TIMEOUT((first.conn.send(u"ISON NickServ"_s), first.hears(u" 303 "_s),
                              first.before.last().contains(u"NickServ")),
                             20'000);
    first.conn.sendPrivmsg(u"NickServ"_s, u"REGISTER s3cret ada@irc.test"_s);
    QVERIFY(first.hears(u"is now registered"_s));
    const QByteArray digest = QSslCertificate::fromPath(file(u"mine.pem"_s))
                                  .constFirst()
                                  .digest(QCryptographicHash::Sha256)
                                  .toHex();
    first.conn.sendPrivmsg(u"NickServ"_s, u"CERT ADD "_s + QString::fromLatin1(digest));
    QVERIFY(first.hears(u"NOTICE .*fingerprint"_s));
    // PLAIN, right and wrong, and EXTERNAL.
    const auto address = u"ircs://ada@127.0.0.1:%1/#c"_s.arg(tls);
    destination with;
    with.password = u"s3cret"_s;
    client right;
    right.go(address, with, u"right"_s);
    QVERIFY(right.hears(u" 900 .* ada "_s) && right.hears(u" 903 "_s) && right.hears(u" JOIN "_s));
    with.password = u"wrong"_s;
    client wrong;
    wrong.go(address, with, u"wrong"_s);
    QVERIFY(wrong.hears(u"^Not logged in: wrong account or password$"_s));
    QVERIFY(!wrong.before.join(u' ').contains(u" 001 "));
    with = {};
    with.certificateFile = file(u"mineboth.pem"_s);
    client external;
    external.go(address, with, u"external"_s);
    QVERIFY(external.hears(u" 900 .* ada "_s) && external.hears(u" JOIN "_s));
    // Services that do not answer, and none at all.
    kill(static_cast<pid_t>(programs.back()->processId()), SIGSTOP);
    with.password = u"s3cret"_s;
    with.certificateFile.clear();
    client patient;
    patient.go(address, with, u"patient"_s);
    QTRY_VERIFY(patient.conn.loggedIn);
    QVERIFY(patient.hears(u"CAP .* ACK .*sasl"_s));
    countdown::pass(15'000);
    QVERIFY(patient.hears(u"^The login service does not answer$"_s) && patient.hears(u"^Next try"_s));
    programs.back()->kill();
    QVERIFY(programs.back()->waitForFinished());
    client none;
    none.go(address, with, u"none"_s);
    QVERIFY(none.hears(u"^This server offers no login that Parlo knows$"_s));
}

void tst_servers::znc()
{
    const quint16 up = freePort();
    const quint16 port = freePort();
    start(u"ngircd"_s, {up, freePort()}, up);
    start(u"znc"_s, {port, up}, port);
    destination with;
    with.password = u"ada/t:s3cret"_s;
    const auto go = [&](client &c) {
        c.go(u"ircs://127.0.0.1:%1"_s.arg(port), with);
        return c.hears(u"^Connected"_s) && c.hears(u"JOIN :?#z"_s) && c.hears(u" 366 "_s);
    };
    client guest;
    {
        client one;
        client two;
        QVERIFY(go(one) && go(two));
        QVERIFY(one.conn.say(u"#z"_s, u"from one"_s, false));
        QVERIFY(two.hears(u":ada!\\S+ PRIVMSG #z :from one"_s));
    }
    guest.go(u"irc://127.0.0.1:%1/#z"_s.arg(up), {}, u"guest"_s);
    QVERIFY(guest.hears(u" 366 "_s));
    QVERIFY(guest.conn.say(u"#z"_s, u"while you were away"_s, false));
    guest.conn.send(u"PING done"_s);
    QVERIFY(guest.hears(u"PONG"_s));
    client again;
    QVERIFY(go(again));
    QVERIFY(again.hears(u"^@.*time=\\S+ :guest!\\S+ PRIVMSG #z :while you were away"_s));
}

QTEST_GUILESS_MAIN(tst_servers)
#include "tst_servers.moc"
