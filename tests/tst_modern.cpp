// SPDX-License-Identifier: MIT
//
// What sessions by address are made of: each row of rows/today.txt names a piece, says what it gets, and what must
// come out.

#include "capnegotiation.h"
#include "casemapping.h"
#include "certificatecheck.h"
#include "connection.h"
#include "ircaddress.h"
#include "ircmessage.h"
#include "isupport.h"
#include "joinkeys.h"
#include "linecodec.h"
#include "linkstore.h"
#include "moderntext.h"
#include "nickchoice.h"
#include "retryclock.h"
#include "richline.h"
#include "rows.h"
#include "sendpace.h"
#include "stspolicy.h"
#include "textsplitter.h"

#include <QSignalSpy>
#include <QSslSocket>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// "%41" is the byte 0x41, which need not be a letter.
QByteArray bytes(const QString &text)
{
    return QByteArray::fromPercentEncoding(text.toUtf8());
}

QString address(const QString &text)
{
    const ircaddress read(text);
    if (!read.isValid())
        return read.error();
    return (read.isEncrypted() ? u"tls "_s : u"plain "_s) + read.account() + u'@' + read.host() + u' ' +
           QString::number(read.port()) + u' ' + read.channels().join(u' ') +
           (read.isLoopback() ? u" (here)"_s : QString());
}

/// The port for the address, the second word of /server, and the preset's.
QString port(const QString &text)
{
    const QStringList words = text.split(u' ');
    return QString::number(ircaddress(words.value(0)).port(words.value(1).toInt(), words.value(2).toInt()));
}

QString line(const QString &text)
{
    const ircmessage message = ircmessage::tagged(linecodec::utf8.text(bytes(text)));
    QStringList params;
    for (int i = 0; i < message.paramCount(); ++i)
        params.append(message.param(i, false));
    const QString nick = message.prefix()->nick();
    return (nick.isNull() ? u"-"_s : nick) + u' ' + message.command() + u' ' + params.join(u'|') +
           (message.isCtcp() ? u" (CTCP)"_s : QString());
}

/// The value of a tag of a line.
QString tag(const QString &text)
{
    const ircmessage message = ircmessage::tagged(linecodec::utf8.text(bytes(text.section(u' ', 1))));
    return message.tags().value(text.section(u' ', 0, 0));
}

QString time(const QString &text)
{
    return messagetags(u"time="_s + text).time().toString(Qt::ISODateWithMs);
}

/// The pieces for so many bytes.
QString split(const QString &text)
{
    return textsplitter::split(text.section(u' ', 1), text.section(u' ', 0, 0).toInt()).join(u'|');
}

/// With the mask of the sender, the command and the target.
QString room(const QString &text)
{
    const QStringList words = text.split(u' ');
    return QString::number(textsplitter::room(512, ircuser(words[0]), words[1], words[2]));
}

QString fold(const QString &text)
{
    return folded(text.section(u' ', 1), casemappingOf(text.section(u' ', 0, 0)));
}

/// The nick and the other nick; NICKLEN; the server's replies.
QString nicks(const QString &text)
{
    const QStringList words = text.split(u' ');
    nickchoice choice(words[0], words[1] == u'-' ? QString() : words[1], words[2].toInt());
    QStringList chosen;
    for (const QString &reply : words.mid(3))
        chosen.append(reply == u"432" ? choice.nextAfterRefused() : choice.nextAfterTaken());
    return chosen.join(u' ');
}

/// What the server says, "/" between the lines, after the link, account and password: "tls ada pw".
QString caps(const QString &text)
{
    const QStringList lines = text.split(u" / "_s);
    const QStringList words = lines[0].split(u' ');
    capnegotiation negotiation({words.value(1), words.value(2), words.contains(u"cert"_s)},
                               words[0] == u"tls");
    QStringList answers;
    for (const QString &said : lines.mid(1)) {
        if (said == u"silence")
            negotiation.timeOut();
        answers += negotiation.receive(ircmessage::tagged(said));
    }
    static const QStringList outcomes{u"open"_s,        u"done"_s,   u"refused"_s,
                                      u"noMechanism"_s, u"silent"_s, u"upgrade"_s};
    return (answers << outcomes[static_cast<int>(negotiation.result())]).join(u" / "_s);
}

/// What is typed behind /join, "/" between the lines, and the channels to join later.
QString joins(const QString &text)
{
    QStringList lines = text.split(u" / "_s);
    const QStringList channels = lines.takeLast().split(u' ');
    joinkeys keys;
    for (QString &typed : lines)
        typed = keys.join(typed, isupport::classic());
    for (const QString &line : keys.join(channels, isupport::classic()))
        lines.append(QString::number(line.size()) + u' ' + line);
    return lines.join(u" / "_s);
}

/// What is kept after an offer on a link to port 6697 at second 1000.
QString sts(const QString &text)
{
    stspolicies kept;
    kept.heard(u"h"_s, 6697, stsoffer::read(u"duration=5"), 0);
    const stsoffer offer = stsoffer::read(text);
    kept.heard(u"h"_s, 6697, offer, 1000);
    return QString::number(offer.port) + u": " + stspolicies(kept.entries()).entries().value(u"h"_s);
}

/// The numbers of Qt's errors; the pin and the fingerprint.
QString certificate(const QString &text)
{
    QStringList words = text.split(u' ');
    const QString fingerprint = words.takeLast();
    const QString pin = words.takeLast();
    QList<QSslError> errors;
    for (const QString &number : std::as_const(words))
        errors.append(QSslError(static_cast<QSslError::SslError>(number.toInt())));
    const certificatecheck check(errors, fingerprint, pin == u'-' ? QString() : pin);
    return check.fault().text + (check.fault().mayBeTrusted() ? u" (may be)"_s : QString()) +
           (check.isAccepted() ? u"taken"_s : QString()) +
           (check.replacesPin() ? u", for the pin"_s : QString());
}

/// What is asked, and the tokens of 005: the channel of a target, the ranks of signs, whether "+l" or "-l" and so on
/// takes an argument, whether two names are the same, the lengths.
QString rules(const QString &text)
{
    const QStringList words = text.split(u' ');
    isupport supports;
    supports.learn(ircmessage::tagged(u":s 005 me "_s + words.mid(2).join(u' ') + u" :are supported"_s));
    const QString &of = words.value(1);
    QString answer;
    if (words[0] == u"channel")
        answer = supports.channelOf(of) + (supports.isChannel(of) ? u" is one"_s : QString());
    for (qsizetype i = 0; i + 1 < of.size() && words[0] == u"args"; i += 2)
        answer += supports.takesArgument(of[i], of[i + 1]) ? u'y' : u'n';
    for (qsizetype i = 0; i < of.size() && words[0] == u"ranks"; ++i)
        answer += u"-vho"_s[static_cast<int>(supports.rankOfMode(supports.modeOfPrefix(of[i])))];
    if (words[0] == u"same")
        answer = supports.same(of.section(u'/', 0, 0), of.section(u'/', 1)) ? u"yes"_s : u"no"_s;
    if (words[0] == u"lengths")
        answer = QString::number(supports.maxNick) + u' ' + QString::number(supports.maxChannel) + u' ' +
                 QString::number(supports.maxLine) + (supports.utf8Only ? u" UTF-8"_s : QString());
    return answer;
}

/// What is shown of what somebody said: the markup, and the runs that are not plain.
QString said(const QString &text)
{
    const QString markup = moderntext::said(text);
    const richline line(markup);
    QString seen = line.text();
    for (const richspan &span : line.spans())
        seen += u" %1+%2:%3,%4/%5"_s.arg(span.start)
                    .arg(span.length)
                    .arg(span.colour, 0, 16)
                    .arg(span.background, 0, 16)
                    .arg(span.styles);
    // Nothing stays open: what comes behind is plain.
    if (richline(QString(markup + u'x')).spans().size() != line.spans().size())
        seen += u" stays open"_s;
    // Characters that nobody can see in a table of rows.
    for (const QChar c : u"\u202a\u202b\u202c\u202d\u202e\u2066\u2067\u2068\u2069"_s)
        seen.replace(c, u'[' + QString::number(c.unicode(), 16) + u']');
    return seen;
}

QString bytesSaid(const QString &text)
{
    return said(QString::fromUtf8(bytes(text)));
}

struct piece
{
    QLatin1StringView name;
    QString (*tried)(const QString &) = nullptr;
};

constexpr piece pieces[] = {
    {"address"_L1, address},
    {"port"_L1, port},
    {"line"_L1, line},
    {"tag"_L1, tag},
    {"time"_L1, time},
    {"split"_L1, split},
    {"room"_L1, room},
    {"fold"_L1, fold},
    {"nicks"_L1, nicks},
    {"caps"_L1, caps},
    {"joins"_L1, joins},
    {"sts"_L1, sts},
    {"rules"_L1, rules},
    {"said"_L1, said},
    {"said in bytes"_L1, bytesSaid},
    {"certificate"_L1, certificate},
};

} // namespace

class tst_modern : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutTls();
    void rows_data() { addRows("today"); }
    void rows();
    void longCredentials();
    void manyPieces();
    void policies();
    void retries();
    void pace();
    void unwritable();
};

void tst_modern::rows()
{
    QFETCH(const QString, input);
    for (const piece &p : pieces) {
        if (input.section(u": "_s, 0, 0) == p.name)
            QTEST(p.tried(input.section(u": "_s, 1)), "expected");
    }
}

// AUTHENTICATE takes 400 bytes, and a last piece that is full is followed by an empty one.
void tst_modern::longCredentials()
{
    for (const int length : {296, 297, 298, 600}) {
        const QString password(length, u'x');
        capnegotiation negotiation({u"a"_s, password, false}, true);
        negotiation.receive(ircmessage::tagged(u"CAP * LS :sasl"_s));
        negotiation.receive(ircmessage::tagged(u"CAP * ACK :sasl"_s));
        QString sent;
        QString last;
        for (const QString &answer : negotiation.receive(ircmessage::tagged(u"AUTHENTICATE +"_s))) {
            last = answer.section(u' ', 1);
            QVERIFY(last.size() <= 400);
            sent += last;
        }
        QVERIFY(last.size() < 400);
        const QByteArray read = QByteArray::fromBase64(sent.remove(u'+').toLatin1());
        QCOMPARE(QString::fromLatin1(read).replace(QChar(u'\0'), u' '), u"a a "_s + password);
    }
}

void tst_modern::manyPieces()
{
    const QString words = u"words and "_s.repeated(36).chopped(1);
    const QStringList parts = textsplitter::split(words, 50);
    QCOMPARE(parts.join(u' '), words);
    QCOMPARE(parts.size(), 8);
    QCOMPARE(textsplitter::split(words.repeated(2), 50), QStringList());
    QCOMPARE(textsplitter::split(u"x"_s, 0), QStringList());
    // A letter that fits into no piece is cut, but not in the middle of a character.
    const QString stack = u"e"_s + QString(100, QChar(0x301));
    const QStringList cut = textsplitter::split(stack, 50);
    QCOMPARE(cut.join(QString()), stack);
    for (const QString &piece : cut)
        QVERIFY(piece.toUtf8().size() <= 50);
}

void tst_modern::policies()
{
    stspolicies policies;
    policies.heard(u"h"_s, 7000, stsoffer::read(u"duration=100,port=1"), 1000);
    QCOMPARE(policies.portFor(u"h"_s, 1099), 7000);
    QCOMPARE(policies.portFor(u"h"_s, 1100), 0);
    QCOMPARE(policies.portFor(u"other"_s, 1000), 0);
    policies.linkEnded(u"h"_s, 1050);
    QCOMPARE(policies.portFor(u"h"_s, 1149), 7000);
    QVERIFY(stspolicies({{u"h"_s, u"x 1 2"_s}, {u"i"_s, u"1"_s}}).entries().isEmpty());
}

void tst_modern::retries()
{
    retryclock clock;
    for (const int seconds : {5, 10, 20, 40, 80, 160, 300, 300})
        QCOMPARE(clock.nextTry(0, 0), seconds * 1000);
    QCOMPARE(clock.nextTry(0, 1), 375'000);
    clock.registered(1000);
    QCOMPARE(clock.nextTry(60'999, 0), 300'000);
    clock.registered(1000);
    QCOMPARE(clock.nextTry(61'000, 0), 5'000);
    clock.error(u"Closing link (Throttled: reconnecting too fast)"_s);
    QCOMPARE(clock.nextTry(61'000, 0), 60'000);
    QCOMPARE(clock.nextTry(61'000, 0), 20'000);
    clock.error(u"Closing link: quit"_s);
    QCOMPARE(clock.nextTry(61'000, 0), 40'000);
    clock.reset();
    QCOMPARE(clock.nextTry(61'000, 0.5), 5'625);
}

void tst_modern::pace()
{
    sendpace pace;
    for (const int wait : {0, 0, 0, 0, 1500, 3000}) {
        QCOMPARE(pace.wait(70), wait);
        pace.sent(70);
    }
    QCOMPARE(pace.wait(8000), 0);
    QCOMPARE(pace.wait(1000), 3570);
}

void tst_modern::unwritable()
{
    qputenv("XDG_CONFIG_HOME", "/dev/null");
    linkstore store;
    QVERIFY(!store.setPin(u"h"_s, 1, u"AA"_s));
    QCOMPARE(store.pin(u"h"_s, 1) + linkstore().pin(u"h"_s, 1), u"AA"_s);
    store.setPolicies(stspolicies({{u"h"_s, u"7000 5 1005"_s}}));
    QCOMPARE(store.policies().portFor(u"h"_s, 1000), 7000);
}

// The first one: a program keeps the TLS that it has begun with.
void tst_modern::withoutTls()
{
    QVERIFY(QSslSocket::setActiveBackend(u"cert-only"_s));
    connection conn;
    QSignalSpy said(&conn, &connection::status);
    conn.connectToServer(u"ircs://127.0.0.1"_s, 0, u"ada"_s, {}, {});
    QCOMPARE(said.value(1).value(0).toString(), u"This Qt has no TLS"_s);
    QCOMPARE(said.size(), 2);
}

QTEST_GUILESS_MAIN(tst_modern)
#include "tst_modern.moc"
