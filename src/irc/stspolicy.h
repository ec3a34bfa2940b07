// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QString>

#include <optional>

/// What a server offers in its capability "sts" (IRCv3, sts).
struct stsoffer
{
    /// Where it speaks TLS, for whoever has come without; 0 when it does not say.
    quint16 port = 0;
    /// For how many seconds nobody is to come without TLS any more, for whoever has come with it.
    std::optional<qint64> duration;

    /// Reads the value of the capability. What cannot be read is as if it had not been said.
    static stsoffer read(QStringView value);
};

/// Which hosts have told us to come with TLS only, and until when. Times are in seconds since 1970.
class stspolicies
{
public:
    stspolicies() = default;
    /// Reads what entries() gave, and leaves out what is wrong.
    explicit stspolicies(const QMap<QString, QString> &entries);

    /// `host` offers this on a link with TLS, which goes to `port`.
    void heard(const QString &host, quint16 port, const stsoffer &offer, qint64 now);
    /// A link with TLS to `host` has ended: what it last promised counts from now.
    void linkEnded(const QString &host, qint64 now);
    /// The port to which to connect with TLS, whatever the address says; 0 when `host` is free to choose.
    quint16 portFor(const QString &host, qint64 now) const;

    /// A text for each host, for the settings.
    QMap<QString, QString> entries() const;

private:
    struct policy
    {
        quint16 port = 0;
        qint64 duration = 0;
        qint64 until = 0;
    };

    QMap<QString, policy> policies;
};
