// SPDX-License-Identifier: MIT
#include "rows.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

QString unescaped(QString text)
{
    if (text.endsWith(u'$'))
        text.chop(1);
    for (char16_t c = 0; c < 0x20; ++c)
        text.replace(u'^' + QString(QChar(c + 0x40)), QString(QChar(c)));
    static const QRegularExpression many(u"\\$(\\d+)(.)"_s);
    for (QRegularExpressionMatch found; (found = many.match(text)).hasMatch();)
        text.replace(found.capturedStart(), found.capturedLength(),
                     QString(found.captured(1).toInt(), found.captured(2).front()));
    return text;
}

void addRows(const char *name)
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    QFile file(QStringLiteral(TESTS "/rows/%1.txt").arg(QLatin1StringView(name)));
    QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
    const QString between = u" => "_s;
    for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        const qsizetype middle = line.lastIndexOf(between);
        if (middle >= 0 && !line.startsWith(u';'))
            QTest::newRow(qPrintable(line))
                << unescaped(line.first(middle)) << unescaped(line.sliced(middle + between.size()));
    }
}
