// SPDX-License-Identifier: MIT
#include "logbook.h"

#include "connection.h"
#include "formatting.h"
#include "irctab.h"
#include "ircview.h"
#include "pastline.h"
#include "secret.h"
#include "tabwindow.h"

#include <QDir>

using namespace Qt::StringLiterals;

logbook::logbook(const connection &ofSession, tabwindow *mainWindow) : conn(ofSession), window(mainWindow)
{
    connect(&files, &chatlog::failed, this, &logbook::failed);
}

void logbook::watch(irctab *tab)
{
    connect(tab->view, &ircview::lineShown, this, [this, tab] { note(tab); });
    if (!isOn())
        return;
    QList<pastline> past;
    for (const logline &line : files.tail(conn.host(), fileOf(tab))) {
        // A line without a time, which somebody else has written, belongs to the one before it.
        if (line.time.isValid() || !past.isEmpty())
            past.append({line.time.isValid() ? line.time.toSecsSinceEpoch() : past.last().time, line.text});
    }
    tab->showPast(past);
}

void logbook::note(const irctab *tab)
{
    if (!isOn())
        return;
    const linestore &lines = tab->view->lines();
    const qint64 last = lines.end() - 1;
    files.append(conn.host(), fileOf(tab), withoutPassword(tab, lines.text(last)), lines.time(last));
}

bool logbook::isOn() const
{
    return window->prefs().logs && !conn.host().isEmpty();
}

QString logbook::fileOf(const irctab *tab) const
{
    return folded(tab->tabName(), conn.supports.caseOfNames());
}

// Only the view knows how the line reads. Our own words are behind our nick, and so are those that somebody quotes of us.
QString logbook::withoutPassword(const irctab *tab, const QString &line) const
{
    const QString nick = unformatted(conn.identity.nick());
    for (const QString &start : {QString(u'<' + nick + u"> "), QString(u"* " + nick + u' ')}) {
        const qsizetype said = line.indexOf(start);
        if (said < 0)
            continue;
        const qsizetype text = said + start.size();
        return line.first(text) + withoutSecrets(tab->tabName(), line.sliced(text));
    }
    return line;
}

QString logbook::whereabouts() const
{
    const QString folder = QDir::toNativeSeparators(files.folder());
    if (isOn())
        return u"The logs are in " + folder;
    return u"There are no logs. To keep some in " + folder + u", see the settings: Ctrl+comma";
}
