// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

/// The tags in front of a line (IRCv3, message-tags). Any text can be read; what is no tag is never asked for.
///
/// Nothing is cut up before somebody asks: a line may hold thousands of tags, and we look at three.
class messagetags
{
public:
    messagetags() = default;
    /// `text` is what stands between the "@" and the space.
    explicit messagetags(QString text);

    /// The value of the last tag of that name, unescaped; empty when there is none or it is not UTF-8.
    QString value(QStringView name) const;
    /// When the line was said (IRCv3, server-time), in UTC; invalid when the line does not say so.
    QDateTime time() const;

private:
    QString tags;
};
