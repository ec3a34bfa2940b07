// SPDX-License-Identifier: MIT
#include "logname.h"

#include <QCryptographicHash>

using namespace Qt::StringLiterals;

namespace {

/// With its hash and an ending, a name takes less than 143 bytes, which every file system bears, also one that encrypts.
constexpr qsizetype maxLength = 90;
constexpr qsizetype hashLength = 40;

} // namespace

QString logname(const QString &name)
{
    const QByteArray utf8 = name.toUtf8();
    QByteArray safe;
    for (qsizetype i = 0; i < utf8.size() && safe.size() <= maxLength; ++i) {
        const char c = utf8[i];
        const bool isAtEnd = i == 0 || i == utf8.size() - 1;
        // A dot in front hides a file, a "-" makes an option of it, and some file systems drop a dot at the end.
        if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || (c != '\0' && std::strchr("#&+_[]{}", c)) ||
            (!isAtEnd && (c == '.' || c == '-')))
            safe += c;
        else
            safe += '%' + QByteArray(1, c).toHex();
    }
    if (safe.isEmpty())
        return u"%"_s;
    // Half a surrogate pair has no UTF-8 of its own.
    if (safe.size() > maxLength || !name.isValidUtf16()) {
        const QByteArrayView all(reinterpret_cast<const char *>(name.utf16()), name.size() * 2);
        safe =
            safe.first(qMin(maxLength, safe.size())) + "%~" +
            QCryptographicHash::hash(all.toByteArray(), QCryptographicHash::Sha256).toHex().first(hashLength);
    }
    return QString::fromLatin1(safe);
}
