// SPDX-License-Identifier: MIT
#include "completion.h"

#include "isupport.h"

using namespace Qt::StringLiterals;

namespace {

bool isNick(const QString &word)
{
    return !isupport::classic().isChannel(word) && !word.startsWith(u'/');
}

} // namespace

completion::completion(const typedline &line, const QStringList &words)
    : before(line.text.first(line.cursor)), after(line.text.sliced(line.cursor))
{
    const qsizetype start = before.lastIndexOf(u' ') + 1;
    const QString beginning = before.sliced(start);
    before.truncate(start);
    if (beginning.isEmpty())
        return;
    for (const QString &word : words) {
        if (word.startsWith(beginning, Qt::CaseInsensitive) && (start == 0 || !word.startsWith(u'/')))
            fitting.append(word + (start == 0 && isNick(word) ? u": "_s : u" "_s));
    }
    fitting.removeDuplicates();
    // Each completed word has its own space after it.
    if (after.startsWith(u' '))
        after.remove(0, 1);
}

typedline completion::next(const typedline &line, bool back)
{
    if (fitting.isEmpty())
        return line;
    if (place < 0 && back)
        place = 0;
    place = (place + (back ? fitting.size() - 1 : 1)) % fitting.size();
    const QString start = before + fitting.at(place);
    shown = {start + after, start.size()};
    return shown;
}
