// SPDX-License-Identifier: MIT
#include "secret.h"

#include <QStringList>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

/// Words in front of a line for the server; in front of a target and a text for it.
constexpr QLatin1StringView lineCarriers[] = {"quote"_L1, "raw"_L1};
constexpr QLatin1StringView textCarriers[] = {"msg"_L1,     "m"_L1,      "query"_L1,    "notice"_L1,
                                              "privmsg"_L1, "squery"_L1, "cprivmsg"_L1, "cnotice"_L1};

/// Services with a name that does not end in "serv": bots of networks, short names that servers and bouncers know.
constexpr QLatin1StringView services[] = {"x"_L1,    "q"_L1,   "ns"_L1,      "cs"_L1, "as"_L1,
                                          "us"_L1,   "os"_L1,  "hs"_L1,      "ms"_L1, "bs"_L1,
                                          "root"_L1, "znc"_L1, "&bitlbee"_L1};

/// What a line for the server begins with that has a password. Servers take some words for those of a service.
constexpr QLatin1StringView secretLines[] = {
    "pass"_L1,    "oper"_L1,   "authenticate"_L1, "identify"_L1, "id"_L1,     "login"_L1,
    "logon"_L1,   "auth"_L1,   "webirc"_L1,       "register"_L1, "verify"_L1, "ghost"_L1,
    "recover"_L1, "regain"_L1, "setpass"_L1,      "die"_L1,      "restart"_L1};

/// What a text for a service begins with that may have a password.
constexpr QLatin1StringView secretRequests[] = {
    "identify"_L1, "ident"_L1,   "id"_L1,        "sidentify"_L1,  "login"_L1, "logon"_L1,   "auth"_L1,
    "register"_L1, "hello"_L1,   "verify"_L1,    "confirm"_L1,    "ghost"_L1, "recover"_L1, "regain"_L1,
    "release"_L1,  "reclaim"_L1, "set"_L1,       "saset"_L1,      "group"_L1, "drop"_L1,    "link"_L1,
    "account"_L1,  "adduser"_L1, "addserver"_L1, "addnetwork"_L1, "merge"_L1};

/// What people type into the wrong tab, with so few words behind it. With more words it is talk.
constexpr QLatin1StringView strayRequests[] = {"identify"_L1, "sidentify"_L1, "ident"_L1, "oper"_L1};
constexpr int maxStrayWords = 2;

template <typename Table>
bool has(const Table &table, const QString &name)
{
    return std::ranges::find(table, name) != std::end(table);
}

struct word
{
    /// In small letters, without control codes and what stands in front of commands and texts.
    QString name;
    bool isSlashed = false;
    /// Behind a sign that begins the sender or the tags of a line (RFC 1459, 2.3; IRCv3, message tags).
    bool isMarked = false;
};

/// Takes the first word off `rest`. Its name is empty if there was none, or only signs.
word takeWord(QStringView *rest)
{
    *rest = rest->trimmed();
    const auto *const space = std::ranges::find_if(*rest, [](QChar c) { return c.isSpace(); });
    const QStringView raw = rest->first(space - rest->begin());
    *rest = rest->sliced(raw.size());
    word taken;
    for (const QChar c : raw) {
        const bool isSign = taken.name.isEmpty() && QStringView(u"/:@.!").contains(c);
        if (isSign) {
            taken.isSlashed = taken.isSlashed || c == u'/';
            taken.isMarked = taken.isMarked || c == u':' || c == u'@';
        } else if (c.category() != QChar::Other_Control && c.category() != QChar::Other_Format) {
            taken.name += c.toLower();
        }
    }
    return taken;
}

/// Whether one of the targets, with a "," between them, is a service. It may be called by its server: "Q@cserve.example".
bool isService(const QString &targets)
{
    const QStringList names = targets.toLower().split(u',');
    return std::ranges::any_of(names, [](const QString &target) {
        const QString name = target.section(u'@', 0, 0);
        return name.endsWith(u"serv") || (name.startsWith(u'*') && name.size() > 1) || has(services, name);
    });
}

bool nextIsService(QStringView rest)
{
    return isService(takeWord(&rest).name);
}

bool isStray(const QString &name, QStringView rest)
{
    if (!has(strayRequests, name))
        return false;
    for (int i = 0; i < maxStrayWords; ++i)
        takeWord(&rest);
    return rest.trimmed().isEmpty();
}

/// What of `text` is a secret: an end of it, which may be empty.
QStringView secretOf(const QString &target, const QString &text)
{
    QStringView rest = text;
    bool toServer = target.isEmpty();
    bool toService = isService(target);
    // Only then a text may have "pass" in it and still be talk.
    bool isTalk = !toServer && !toService;
    while (!rest.trimmed().isEmpty()) {
        const word next = takeWord(&rest);
        if (next.isSlashed) {
            toServer = true;
            isTalk = false;
        }
        if (next.name.isEmpty() || (toServer && (next.isMarked || has(lineCarriers, next.name))))
            continue;
        if (has(textCarriers, next.name) && (toServer || nextIsService(rest))) {
            toServer = false;
            toService = isService(takeWord(&rest).name);
            continue;
        }
        // "ns identify", with or without a slash. Of the short names, only these two are no words.
        if ((toServer || next.name.size() > 2 || next.name == u"ns" || next.name == u"cs") &&
            isService(next.name)) {
            toServer = false;
            toService = true;
            continue;
        }
        const bool isSecret = (toServer && has(secretLines, next.name)) ||
                              (toService && (has(secretRequests, next.name) ||
                                             (!isTalk && text.contains(u"pass", Qt::CaseInsensitive)))) ||
                              isStray(next.name, rest);
        return isSecret ? rest.trimmed() : QStringView();
    }
    return {};
}

} // namespace

QString withoutSecrets(const QString &target, const QString &text)
{
    const QStringView secret = secretOf(target, text);
    return secret.isEmpty() ? text : QStringView(text).first(secret.data() - text.data()) + u"***";
}
