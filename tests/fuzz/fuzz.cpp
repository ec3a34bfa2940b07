// SPDX-License-Identifier: MIT
#include "fuzz.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QNetworkProxy>
#include <QTemporaryDir>

#include <unistd.h>

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(const char *data, size_t size);

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    if (access("/dev/shm", W_OK) == 0)
        qputenv("TMPDIR", "/dev/shm");
    static const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    // It is never deleted, because nothing calls us at the end of the process.
    static const auto *app = new QApplication(*argc, *argv);
    Q_UNUSED(app);
    QLoggingCategory::setFilterRules(u"*=false"_s);
    // No name of a host in an input is looked up, and no connection leaves the loopback.
    QNetworkProxy::setApplicationProxy({QNetworkProxy::HttpProxy, u"127.0.0.1"_s, 1});
    return 0;
}

int LLVMFuzzerTestOneInput(const char *data, size_t size)
{
    fuzz(QByteArray(data, static_cast<qsizetype>(size)));
    return 0;
}

void require(bool holds, const char *what)
{
    if (!holds)
        qFatal("does not hold: %s", what);
}

QByteArrayList linesOnWire(const QByteArray &bytes)
{
    QByteArrayList lines = bytes.split('\n');
    require(lines.takeLast().isEmpty(), "what is written ends with CR LF");
    for (QByteArray &line : lines) {
        require(line.indexOf('\r') == line.size() - 1 && !line.contains('\0'), "a line is one line");
        line.chop(1);
    }
    return lines;
}
