#pragma once

#include "localplatform/Routes.h"

#include "async/Clock.h"

#include <QHash>
#include <QJsonArray>

#include <vector>

namespace palvera::local {

/// Someone who can sign in, and how.
struct Account {
    enum class Way { password, emailCode, authenticator, enrolment, sso, migration, renewal, accessCode };

    const char* email;
    const char* name;
    Way way;
    const char* secret; ///< the password or access code
    const char* code;   ///< asked for after it; empty when nothing is
    const char* note;   ///< for the table printed at start
};

/// One account for each way of signing in.
const std::vector<Account>& sampleAccounts();

/// Who is signed in, by cookie, and the calls that change it. One thread at a time.
class SignIn {
public:
    using WallTime = Clock::WallTime;

    /// The answer to one of the auth calls or `me`. `cookies` is the request's Cookie header.
    Reply answer(const Call& call, const QJsonObject& body, const QByteArray& cookies, WallTime now);
    /// Refuses (401) when the cookies name nobody who is signed in.
    void checkSignedIn(const QByteArray& cookies, WallTime now) const;

    /// A grant that ends a web sign-in of that account, good once; null when there is no such account.
    QString grantFor(const QString& email);
    /// Signs the account in and gives the Cookie header of its requests.
    QByteArray open(const QString& email, WallTime now);

    /// Nobody is signed in any more.
    void expireAll() { m_sessions.clear(); }

    /// What survives a restart.
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
    Reply passkeyOptions();
    Reply passkey(const QJsonObject& body, WallTime now);
    Reply redeem(const QJsonObject& body, WallTime now);
    Reply logout(const QByteArray& cookies);
    static QString token(const char* kind);

    QHash<QString, Session> m_sessions;   // by cookie value
    QHash<QString, QString> m_grants;     // accounts by grant
    QHash<QString, QString> m_challenges; // challenges by their id
};

} // namespace palvera::local
