#pragma once

#include "localplatform/Accounts.h"
#include "localplatform/Passkeys.h"
#include "localplatform/Routes.h"
#include "localplatform/WebDoor.h"

#include <QHash>
#include <QJsonArray>

namespace palvera::local {

/// Who is signed in, by cookie, and the calls that change it. One thread at a time.
class SignIn {
public:
    using WallTime = Clock::WallTime;

    /// The answer to one of the auth calls or `me`. `cookies` is the request's Cookie header.
    Reply answer(const Call& call, const QJsonObject& body, const QByteArray& cookies, WallTime now);
    /// Refuses (401) when the cookies name nobody who is signed in.
    void checkSignedIn(const QByteArray& cookies, WallTime now) const;

    /// Where browsers sign in.
    WebDoor& webDoor() { return m_webDoor; }
    /// Signs the account in and gives the Cookie header of its requests.
    QByteArray open(const QString& email, WallTime now);

    /// Nobody is signed in any more.
    void expireAll() { m_sessions.clear(); }

    Passkeys& passkeys() { return m_passkeys; }

    /// What survives a restart, beside the passkeys.
    QJsonArray toJson() const;
    void fromJson(const QJsonArray& sessions);

private:
    enum class Stage { signedIn, emailCode, authenticator };
    struct Session {
        QString email;
        Stage stage = Stage::signedIn;
        WallTime ends;
    };

    const Session& session(const QByteArray& cookies, WallTime now) const;
    Reply begin(const Account& account, Stage stage, const QJsonObject& answer, WallTime now);
    Reply signedIn(const Account& account, WallTime now);
    Reply password(const QJsonObject& body, WallTime now);
    Reply migrate(const QJsonObject& body, WallTime now);
    Reply accessCode(const QJsonObject& body, WallTime now);
    Reply code(const QJsonObject& body, const QByteArray& cookies, Stage stage, WallTime now);
    Reply redeem(const QJsonObject& body, WallTime now);
    Reply logout(const QByteArray& cookies);

    Passkeys m_passkeys;
    WebDoor m_webDoor{m_passkeys};
    QHash<QString, Session> m_sessions; // by cookie value
};

} // namespace palvera::local
