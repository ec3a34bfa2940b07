// SPDX-License-Identifier: MIT
#include "preferences.h"

#include "config.h"

#include <tuple>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize minWindow(100, 100);
constexpr QSize maxWindow(16000, 16000);

QString windowGroup()
{
    return u"Window"_s;
}

QString chatGroup()
{
    return u"Chat"_s;
}

int numberIn(const Config &file, const char *key)
{
    return file.readEntry(QLatin1StringView(key)).toInt();
}

/// A switch as the file has it. What is neither on nor off leaves the default.
void readSwitch(const Config &file, const QString &key, bool *on)
{
    const QString text = file.readEntry(key);
    if (text == u"0" || text == u"1")
        *on = text == u"1";
}

auto inWindow(const preferences &p)
{
    return std::tie(p.fontSize, p.windowSize, p.userListShown, p.userListWidth, p.times, p.scrollback);
}

void writeWindow(Config *file, const preferences &p)
{
    file->setGroup(windowGroup());
    const auto write = [file](const char *key, int number) {
        file->writeEntry(QLatin1StringView(key), QString::number(number));
    };
    write("FontSize", p.fontSize);
    if (p.windowSize.isValid()) {
        write("Width", p.windowSize.width());
        write("Height", p.windowSize.height());
    }
    write("UserList", p.userListShown ? 1 : 0);
    // The file of somebody who has never dragged the list stays as it was.
    if (p.userListWidth != preferences::minUserListWidth || numberIn(*file, "UserListWidth") != 0)
        write("UserListWidth", p.userListWidth);
    write("Times", p.times ? 1 : 0);
    write("Scrollback", p.scrollback);
}

} // namespace

preferences preferences::load(const QString &name)
{
    Config file(name);
    file.setGroup(windowGroup());
    const auto number = [&file](const char *key) { return numberIn(file, key); };
    preferences kept;
    if (const int size = number("FontSize"); size != 0)
        kept.fontSize = stepped(size, 0);
    const QSize size(number("Width"), number("Height"));
    if (size.expandedTo(minWindow).boundedTo(maxWindow) == size)
        kept.windowSize = size;
    kept.userListShown = file.readEntry(u"UserList"_s, u"1"_s) != u"0";
    kept.userListWidth = qBound(minUserListWidth, number("UserListWidth"), maxUserListWidth);
    kept.times = number("Times") != 0;
    kept.scrollback = qMax(0, number("Scrollback"));

    file.setGroup(chatGroup());
    kept.highlights = words(file.readEntry(u"Highlight"_s));
    readSwitch(file, u"Notify"_s, &kept.notifies);
    readSwitch(file, u"Log"_s, &kept.logs);
    readSwitch(file, u"Reopen"_s, &kept.reopens);
    // A mask may have a comma in it.
    kept.ignored = file.readEntry(u"Ignore"_s).split(u' ', Qt::SkipEmptyParts);
    return kept;
}

bool preferences::save(const QString &name, const preferences &before) const
{
    Config file(name);
    if (inWindow(*this) != inWindow(before))
        writeWindow(&file, *this);
    file.setGroup(chatGroup());
    const auto write = [&file](const QString &key, const QString &value, const QString &old) {
        if (value != old)
            file.writeEntry(key, value);
    };
    const auto writeSwitch = [&write](const QString &key, bool on, bool wasOn) {
        write(key, QString::number(on ? 1 : 0), QString::number(wasOn ? 1 : 0));
    };
    write(u"Highlight"_s, highlights.join(u' '), before.highlights.join(u' '));
    writeSwitch(u"Notify"_s, notifies, before.notifies);
    writeSwitch(u"Log"_s, logs, before.logs);
    writeSwitch(u"Reopen"_s, reopens, before.reopens);
    write(u"Ignore"_s, ignored.join(u' '), before.ignored.join(u' '));
    return file.save();
}

int preferences::stepped(int size, int steps)
{
    return qBound(minFont, size + steps, maxFont);
}

QStringList preferences::words(const QString &text)
{
    QStringList all = QString(text).replace(u',', u' ').simplified().split(u' ', Qt::SkipEmptyParts);
    all.removeIf([](const QString &word) { return word.size() > maxHighlight; });
    all.removeDuplicates();
    return all.first(qMin(all.size(), maxHighlights));
}
