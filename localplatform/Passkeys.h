#pragma once

#include "async/Clock.h"
#include "localplatform/Wire.h"

#include <QHash>
#include <QJsonArray>

namespace palvera::local {

/// The passkeys that are registered, and what they are asked to sign. One thread at a time.
class Passkeys {
public:
    using WallTime = Clock::WallTime;
    static constexpr auto challengeLife = std::chrono::minutes(5);
    /// To which they belong: a browser shows the platform as http://localhost:PORT.
    static const QString relyingParty;

    /// Registers {email, id, publicKey, discoverable}: the key is an X.509 SubjectPublicKeyInfo, all bytes are
    /// base64url. One that can be discovered is not named in challenges.
    void add(const QJsonObject& passkey);
    /// {options, challengeId} for an assertion.
    QJsonObject challenge(WallTime now);
    /// Whose passkey has signed `body`, {response, challengeId}; the client that had it do so must be at `origin`.
    /// Refuses what is not known or too late; what no proper client and key send is a violation.
    QString accountOf(const QJsonObject& body, const QString& origin, WallTime now);

    /// What survives a restart.
    QJsonArray toJson() const { return QJsonArray::fromVariantList(m_passkeys.values()); }
    void fromJson(const QJsonArray& passkeys);

private:
    struct Challenge {
        QString bytes;
        WallTime ends;
    };

    QVariantMap m_passkeys; // as they were registered, by their ids
    QHash<QString, Challenge> m_challenges;
};

} // namespace palvera::local
