#pragma once

#include "async/Clock.h"
#include "localplatform/Passkeys.h"
#include "localplatform/Wire.h"

#include <QHash>

namespace palvera::local {

/// The pages on which a browser signs somebody in, and the identity provider behind them, which knows its browsers
/// again by a cookie. In the end the browser goes to the application, with a grant. One thread at a time.
class WebDoor {
public:
    using WallTime = Clock::WallTime;
    static constexpr auto grantLife = std::chrono::minutes(2);

    /// `passkeys` outlives it.
    explicit WebDoor(Passkeys& passkeys) : m_passkeys(passkeys) {}

    /// Where a sign-in of the application begins: `provider` and `email` may be empty.
    Reply start(const QString& provider, const QString& email, const QByteArray& cookies, WallTime now);
    /// What a browser gets for a path and query below /sign-in.
    Reply page(const QByteArray& target, WallTime now);
    /// What scripts on these pages get for what they send. `host` is what the browser calls the platform.
    Reply post(const QByteArray& target, const QByteArray& body, const QByteArray& host, WallTime now);
    /// Whom `grant` signs in, once and in time; null when nobody.
    QString redeem(const QString& grant, WallTime now);

private:
    struct Grant {
        QString email;
        WallTime ends;
    };
    Reply finish(const QString& email, WallTime now);
    QByteArray grantFor(const QString& email, WallTime now);

    Passkeys& m_passkeys;
    QHash<QString, Grant> m_grants;
};

} // namespace palvera::local
