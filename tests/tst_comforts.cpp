// SPDX-License-Identifier: MIT
//
// The ignore list, what is kept out of logs, and the logs. Each row of rows/comforts.txt names a piece.

#include "chatlog.h"
#include "ignorelist.h"
#include "ircmessage.h"
#include "ircuser.h"
#include "logname.h"
#include "rows.h"
#include "secret.h"

#include <QFile>
#include <QProcess>
#include <QSet>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

/// Masks with "," between them, the sender and the server's mapping.
QString ignore(const QString &text)
{
    const QStringList words = text.split(u' ');
    isupport rules;
    rules.learn(ircmessage::tagged(u":s 005 me CASEMAPPING="_s + words.value(2) + u" :are supported"_s));
    const ignorelist list(words[0].split(u','));
    return list.ignores(ircuser(words.value(1)), rules) ? u"ignored"_s : u"heard"_s;
}

/// The words "+mask" and "-mask": what happens, and what remains.
QString list(const QString &text)
{
    ignorelist list;
    QString seen;
    for (const QString &word : text.split(u' ')) {
        const QString mask = word.mid(1).replace(u'_', u' ');
        const bool done = word.startsWith(u'+') ? list.add(mask, isupport::classic())
                                                : list.remove(mask, isupport::classic());
        seen += done ? u'y' : u'n';
    }
    return (QStringList(seen) + ignorelist(list.entries()).entries()).join(u' ');
}

/// The target, "-" for the server, and the text behind a "|".
QString secret(const QString &text)
{
    const QString target = text.section(u'|', 0, 0);
    return withoutSecrets(target == u"-" ? QString() : target, text.section(u'|', 1));
}

/// Steps on the log "#a" of the network "Net", one second after the other.
QString logs(const QString &script)
{
    const QTemporaryDir home;
    chatlog log(home.path());
    const QSignalSpy failures(&log, &chatlog::failed);
    QDateTime time(QDate(2026, 11, 23), QTime(12, 0));
    QStringList seen;
    for (const QString &step : script.split(u" / "_s)) {
        const QString verb = step.section(u' ', 0, 0);
        const QString rest = step.section(u' ', 1);
        if (verb == u"say" || verb == u"keep")
            log.append(u"Net"_s, u"#a"_s, rest, time = time.addSecs(1));
        else if (verb == u"other")
            chatlog(home.path()).append(u"Net"_s, u"#a"_s, rest, time = time.addSecs(1));
        if (verb == u"say") {
            log.flush();
        } else if (verb == u"appears") {
            if (!QTest::qWaitFor([&] { return QFile::exists(log.folder() + u"/%4eet/#a.log"); }))
                seen += u"no log"_s;
        } else if (verb == u"tail") {
            for (const logline &line : log.tail(u"Net"_s, u"#a"_s, rest.toInt()))
                seen += (line.time.isValid() ? line.time.toString(u"hh:mm:ss "_s) : QString()) + line.text;
        } else if (verb == u"run") {
            QProcess shell;
            shell.setWorkingDirectory(home.path());
            shell.start(u"sh"_s, {u"-c"_s, rest});
            shell.waitForFinished();
            seen += QString::fromUtf8(shell.readAll()).split(u'\n', Qt::SkipEmptyParts);
        } else if (verb == u"limit") {
            rlimit limit = {};
            ::getrlimit(RLIMIT_FSIZE, &limit);
            limit.rlim_cur = rest == u"none" ? limit.rlim_max : rest.toULong();
            ::setrlimit(RLIMIT_FSIZE, &limit);
        }
    }
    if (!failures.isEmpty())
        seen += u"told "_s + QString::number(failures.size());
    return seen.join(u" | "_s);
}

struct piece
{
    QLatin1StringView name;
    QString (*tried)(const QString &) = nullptr;
};

constexpr piece pieces[] = {
    {"ignore"_L1, ignore}, {"list"_L1, list}, {"secret"_L1, secret}, {"file"_L1, logname}, {"log"_L1, logs}};

} // namespace

class tst_comforts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void rows_data() { addRows("comforts"); }
    void rows();
    void namesHaveTheirOwnFiles();
};

void tst_comforts::initTestCase()
{
    qputenv("TZ", "Asia/Kolkata");
    ::umask(0);
    std::signal(SIGXFSZ, SIG_IGN);
}

void tst_comforts::rows()
{
    QFETCH(const QString, input);
    for (const piece &p : pieces) {
        if (input.section(u": "_s, 0, 0) == p.name)
            QTEST(p.tried(input.section(u": "_s, 1)), "expected");
    }
}

void tst_comforts::namesHaveTheirOwnFiles()
{
    QSet<QString> files;
    const QString longName(5000, u'a');
    const QStringList names{QString(),
                            u"%"_s,
                            u"a"_s,
                            u"A"_s,
                            u"a."_s,
                            u"?"_s,
                            QString(QChar(0xd800)),
                            QString(QChar(0xd801)),
                            u"\ufffd"_s,
                            longName,
                            longName + u'a',
                            logname(longName),
                            u"%61"_s,
                            u"a/b"_s,
                            u"a%2fb"_s,
                            u".."_s};
    for (const QString &name : names) {
        const QString file = logname(name);
        QVERIFY2(file.size() < 140 && !file.contains(u'/') && !file.startsWith(u'.'), qPrintable(file));
        files.insert(file.toLower());
    }
    QCOMPARE(files.size(), names.size());
}

QTEST_GUILESS_MAIN(tst_comforts)
#include "tst_comforts.moc"
