// SPDX-License-Identifier: MIT
#include "preferences.h"

#include "config.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int minFont = 4;
constexpr int maxFont = 40;
constexpr QSize minWindow(100, 100);
constexpr QSize maxWindow(16000, 16000);

QString group()
{
    return u"Window"_s;
}

int numberIn(Config &file, const char *key)
{
    return file.readEntry(QLatin1StringView(key)).toInt();
}

} // namespace

preferences preferences::load(const QString &name)
{
    Config file(name);
    file.setGroup(group());
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
    return kept;
}

bool preferences::save(const QString &name) const
{
    Config file(name);
    file.setGroup(group());
    const auto write = [&file](const char *key, int number) {
        file.writeEntry(QLatin1StringView(key), QString::number(number));
    };
    write("FontSize", fontSize);
    if (windowSize.isValid()) {
        write("Width", windowSize.width());
        write("Height", windowSize.height());
    }
    write("UserList", userListShown ? 1 : 0);
    // The file of somebody who has never dragged the list stays as it was.
    if (userListWidth != minUserListWidth || numberIn(file, "UserListWidth") != 0)
        write("UserListWidth", userListWidth);
    write("Times", times ? 1 : 0);
    write("Scrollback", scrollback);
    return file.save();
}

int preferences::stepped(int size, int steps)
{
    return qBound(minFont, size + steps, maxFont);
}
