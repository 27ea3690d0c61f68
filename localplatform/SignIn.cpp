#include "localplatform/SignIn.h"

#include "localplatform/QrImage.h"

#include <QDateTime>

namespace palvera::local {

namespace {

using Way = Account::Way;
using namespace std::chrono_literals;

const QByteArray cookieName = "pv_session";
constexpr auto sessionLife = 30 * 24h;

[[noreturn]] void wrongCredentials(const QString& message = QStringLiteral("That email or password is not right."))
{
    refuse(401, QStringLiteral("invalid_credentials"), message);
}

/// The account of `body` when its secret fits.
const Account& knownAccount(const QJsonObject& body)
{
    const auto* account = findAccount(body[QStringLiteral("email")].toString());
    auto secret = body[QStringLiteral("password")].toString();
    if (!account || secret.isEmpty() || secret != QLatin1String(account->secret))
        wrongCredentials();
    return *account;
}

QJsonObject userJson(const Account& account)
{
    return {{QStringLiteral("id"), QStringLiteral("user-") + QString::fromLatin1(account.email).section(u'@', 0, 0)},
            {QStringLiteral("email"), QString::fromLatin1(account.email)},
            {QStringLiteral("name"), QString::fromUtf8(account.name)}};
}

QByteArray setCookie(const QString& value, std::chrono::seconds life)
{
    return cookieName + '=' + value.toLatin1() + "; Path=/; Max-Age=" + QByteArray::number(qint64{life.count()}) +
           "; HttpOnly; SameSite=Lax";
}

Reply configReply()
{
    return jsonReply({{QStringLiteral("devAuth"), true},
                      {QStringLiteral("workos"), true},
                      {QStringLiteral("environment"), QStringLiteral("local")},
                      {QStringLiteral("social"),
                       QJsonArray{QStringLiteral("google"), QStringLiteral("microsoft"), QStringLiteral("apple")}}});
}

Reply methodReply(const QJsonObject& body)
{
    const auto* account = findAccount(body[QStringLiteral("email")].toString().trimmed());
    if (!account || account->way != Way::sso)
        return jsonReply({{QStringLiteral("method"), QStringLiteral("password")}});
    return jsonReply({{QStringLiteral("method"), QStringLiteral("sso")},
                      {QStringLiteral("url"), QStringLiteral("https://sso.harbour.example/start")}});
}

} // namespace

Reply SignIn::answer(const Call& call, const QJsonObject& body, const QByteArray& cookies, WallTime now)
{
    switch (call.route->operation) {
    case Operation::config:
        return configReply();
    case Operation::methods:
        return methodReply(body);
    case Operation::me:
        return jsonReply({{QStringLiteral("user"), userJson(*findAccount(session(cookies, now).email))}});
    case Operation::password:
        return password(body, now);
    case Operation::migrate:
        return migrate(body, now);
    case Operation::login:
        return accessCode(body, now);
    case Operation::verify:
        return code(body, cookies, Stage::emailCode, now);
    case Operation::totp:
        return code(body, cookies, Stage::authenticator, now);
    case Operation::resend:
        if (session(cookies, now).stage != Stage::emailCode)
            refuse(409, QStringLiteral("nothing_to_send"), QStringLiteral("No code is waited for."));
        return jsonReply({});
    case Operation::forgot:
        return jsonReply({});
    case Operation::passkeyOptions:
        return jsonReply(m_passkeys.challenge(now));
    case Operation::passkey:
        return signedIn(*findAccount(m_passkeys.accountOf(body, QStringLiteral("https://localhost"), now)), now);
    case Operation::redeem:
        return redeem(body, now);
    case Operation::logout:
        return logout(cookies);
    case Operation::webStart:
        return m_webDoor.start(call.value("provider"), call.value("email"), cookies, now);
    case Operation::unknown:
    case Operation::orgs:
    case Operation::projects:
    case Operation::deliverables:
    case Operation::assets:
    case Operation::bin:
    case Operation::binDownload:
    case Operation::assetUrl:
    case Operation::start:
    case Operation::binStart:
    case Operation::parts:
    case Operation::complete:
    case Operation::abort:
    case Operation::asset:
    case Operation::progress:
    case Operation::put:
    case Operation::get:
    case Operation::feed:
    case Operation::image:
        break;
    }
    refuse(404, QStringLiteral("not_found"), QStringLiteral("There is no such call."));
}

const SignIn::Session& SignIn::session(const QByteArray& cookies, WallTime now) const
{
    auto found = m_sessions.find(cookieValue(cookies, cookieName));
    if (found == m_sessions.end() || found->ends <= now)
        refuse(401, QStringLiteral("unauthorized"), QStringLiteral("Sign in to go on."));
    return *found;
}

void SignIn::checkSignedIn(const QByteArray& cookies, WallTime now) const
{
    if (session(cookies, now).stage != Stage::signedIn)
        refuse(401, QStringLiteral("unauthorized"), QStringLiteral("The sign-in is not finished."));
}

Reply SignIn::begin(const Account& account, Stage stage, const QJsonObject& answer, WallTime now)
{
    auto value = token("s");
    m_sessions[value] = {.email = QString::fromLatin1(account.email), .stage = stage, .ends = now + sessionLife};
    auto reply = jsonReply(answer);
    reply.headers.append({"Set-Cookie", setCookie(value, sessionLife)});
    return reply;
}

Reply SignIn::signedIn(const Account& account, WallTime now)
{
    return begin(account, Stage::signedIn, {{QStringLiteral("user"), userJson(account)}}, now);
}

Reply SignIn::password(const QJsonObject& body, WallTime now)
{
    if (const auto* account = findAccount(body[QStringLiteral("email")].toString());
        account && account->way == Way::sso)
        return jsonReply({{QStringLiteral("next"), QStringLiteral("sso")},
                          {QStringLiteral("url"), QStringLiteral("https://sso.harbour.example/start")}});
    const auto& account = knownAccount(body);
    switch (account.way) {
    case Way::password:
        return signedIn(account, now);
    case Way::emailCode:
        return begin(account, Stage::emailCode, {{QStringLiteral("next"), QStringLiteral("verify_email")}}, now);
    case Way::authenticator:
        return begin(account, Stage::authenticator, {{QStringLiteral("next"), QStringLiteral("totp")}}, now);
    case Way::enrolment:
        return begin(account, Stage::authenticator,
                     {{QStringLiteral("next"), QStringLiteral("enrol_totp")},
                      {QStringLiteral("qrCode"), qrImage},
                      {QStringLiteral("secret"), QStringLiteral("JBSW Y3DP EHPK 3PXP")}},
                     now);
    case Way::sso:
    case Way::migration:
    case Way::renewal:
    case Way::accessCode:
        break;
    }
    wrongCredentials();
}

Reply SignIn::migrate(const QJsonObject& body, WallTime now)
{
    const auto& account = knownAccount(body);
    if (account.way == Way::migration)
        return signedIn(account, now);
    if (account.way == Way::renewal)
        wrongCredentials(QStringLiteral("Your password needs renewing. Use the link we sent you."));
    wrongCredentials();
}

Reply SignIn::accessCode(const QJsonObject& body, WallTime now)
{
    const auto& account = knownAccount(body);
    if (account.way != Way::accessCode)
        wrongCredentials();
    return signedIn(account, now);
}

Reply SignIn::code(const QJsonObject& body, const QByteArray& cookies, Stage stage, WallTime now)
{
    const auto& pending = session(cookies, now);
    const auto& account = *findAccount(pending.email);
    if (pending.stage != stage)
        refuse(409, QStringLiteral("no_code_asked"), QStringLiteral("No code is waited for."));
    if (body[QStringLiteral("code")].toString() != QLatin1String(account.code))
        refuse(401, QStringLiteral("invalid_code"), QStringLiteral("That code is not right."));
    m_sessions.remove(cookieValue(cookies, cookieName));
    return signedIn(account, now);
}

Reply SignIn::redeem(const QJsonObject& body, WallTime now)
{
    auto email = m_webDoor.redeem(body[QStringLiteral("grant")].toString(), now);
    if (email.isEmpty())
        refuse(401, QStringLiteral("invalid_grant"), QStringLiteral("That sign-in has expired. Try again."));
    return signedIn(*findAccount(email), now);
}

Reply SignIn::logout(const QByteArray& cookies)
{
    m_sessions.remove(cookieValue(cookies, cookieName));
    auto reply = jsonReply({});
    reply.headers.append({"Set-Cookie", setCookie({}, 0s)});
    return reply;
}

QByteArray SignIn::open(const QString& email, WallTime now)
{
    auto cookie = headerOf(signedIn(*findAccount(email), now).headers, "Set-Cookie");
    return cookie.left(cookie.indexOf(';'));
}

QJsonArray SignIn::toJson() const
{
    QJsonArray sessions;
    for (auto it = m_sessions.begin(); it != m_sessions.end(); ++it)
        sessions.append(
            QJsonObject{{QStringLiteral("cookie"), it.key()},
                        {QStringLiteral("email"), it->email},
                        {QStringLiteral("stage"), static_cast<int>(it->stage)},
                        {QStringLiteral("ends"),
                         qint64{std::chrono::floor<std::chrono::seconds>(it->ends).time_since_epoch().count()}}});
    return sessions;
}

void SignIn::fromJson(const QJsonArray& sessions)
{
    for (const auto& entry : sessions) {
        auto json = entry.toObject();
        Session session{.email = json[QStringLiteral("email")].toString(),
                        .stage = static_cast<Stage>(json[QStringLiteral("stage")].toInt()),
                        .ends = WallTime(std::chrono::seconds(json[QStringLiteral("ends")].toInteger()))};
        if (findAccount(session.email))
            m_sessions[json[QStringLiteral("cookie")].toString()] = session;
    }
}

} // namespace palvera::local
