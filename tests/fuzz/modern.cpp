// SPDX-License-Identifier: MIT
//
// The pieces of a session by address take whatever comes: each line of the input goes to all of them.

#include "fuzz.h"

#include "capnegotiation.h"
#include "formatting.h"
#include "ircaddress.h"
#include "ircmessage.h"
#include "isupport.h"
#include "linecodec.h"
#include "moderntext.h"
#include "richline.h"
#include "textsplitter.h"

#include <algorithm>

using namespace Qt::StringLiterals;

static bool isPlain(const QString &text)
{
    return std::none_of(text.begin(), text.end(), [](QChar c) {
        return c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
               c == QChar::ParagraphSeparator;
    });
}

static void readAddress(const QString &text)
{
    const ircaddress address(text);
    require(address.isValid() == address.error().isEmpty(),
            "an address is valid, or a text says what is wrong");
    require(!address.isValid() || (address.port() != 0 && isPlain(address.host() + address.account() +
                                                                  address.channels().join(QString()))),
            "what an address gives can stand in a line");
}

static void show(const QString &said)
{
    QString text;
    for (const textrun &run : formatted(said))
        text += run.text;
    require(isPlain(text) && isPlain(unformatted(said)), "what is shown stays in its line");
    QString read(richline(moderntext::said(said)).text());
    require(read == text, "markup is of ours alone");
    const richline after(QString(moderntext::said(said) + u'x'));
    require(after.spans().size() <= 512, "runs are within bounds");
}

static void cut(const QString &text, qsizetype room)
{
    const QStringList pieces = textsplitter::split(text, room);
    require(pieces.size() <= textsplitter::maxPieces, "there are eight pieces at most");
    for (const QString &piece : pieces)
        require(piece.toUtf8().size() <= room, "a piece fits");
    require(pieces.isEmpty() || pieces.join(QString()).remove(u' ') == QString(text).remove(u' '),
            "the pieces make up the text");
}

void fuzz(const QByteArray &input)
{
    capnegotiation negotiation({u"ada"_s, u"pw"_s, false}, true);
    isupport rules;
    for (const QByteArray &bytes : input.split('\n')) {
        const QString line = linecodec::utf8.text(bytes + "\r\n");
        const ircmessage message = ircmessage::tagged(line);
        message.tags().time();
        for (const QString &answer : negotiation.receive(message))
            require(answer.toUtf8().size() <= 510 && isPlain(answer), "an answer is a line");
        rules.learn(message);
        require(rules.maxLine >= 512 && rules.maxNick > 0, "lengths are within bounds");
        readAddress(line.chopped(2));
        show(message.paramsFrom(0, true));
        cut(QString::fromUtf8(linecodec::utf8.bytes(line)), 1 + bytes.size() / 3);
    }
}
