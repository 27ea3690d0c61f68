#include "localplatform/WebDoor.h"

#include "localplatform/Accounts.h"
#include "localplatform/Escapes.h"
#include "localplatform/Pages.h"

#include <QJsonDocument>

namespace palvera::local {

namespace {

const QByteArray identityCookie = "pv_identity";

HttpHeaders remember(const QByteArray& email, const char* maxAge)
{
    return {{"Set-Cookie", identityCookie + '=' + email + "; Path=/; Max-Age=" + maxAge + "; HttpOnly; SameSite=Lax"}};
}

} // namespace

Reply WebDoor::start(const QString& provider, const QString& email, const QByteArray& cookies, WallTime now)
{
    const auto* known = findAccount(cookieValue(cookies, identityCookie));
    const bool isMeant = known && (email.isEmpty() || findAccount(email) == known);
    return isMeant ? finish(QString::fromLatin1(known->email), now) : htmlReply(signInPage(provider, email));
}

Reply WebDoor::page(const QByteArray& target, WallTime now)
{
    constexpr QByteArrayView choice = "/sign-in/finish?account=";
    if (target.startsWith(choice))
        return finish(unescape(target.mid(choice.size())).value_or(QString()), now);
    if (target.startsWith("/sign-in/finish"))
        return htmlReply(endPage("You are not signed in. You can close this page.", "error=access_denied"));
    if (target.startsWith("/sign-in/passkeys"))
        return htmlReply(passkeysPage());
    auto page = htmlReply(signInPage({}, {}));
    if (target.startsWith("/sign-in/forget"))
        page.headers += remember({}, "0");
    return page;
}

Reply WebDoor::finish(const QString& email, WallTime now)
{
    const auto* account = findAccount(email);
    if (!account)
        return htmlReply(endPage("There is no such account. You can close this page.", "error=unknown_account"));
    auto page = htmlReply(endPage("You are signed in. You can close this page.", grantFor(email, now)));
    page.headers += remember(account->email, "3600");
    return page;
}

/// As an item of the application's address.
QByteArray WebDoor::grantFor(const QString& email, WallTime now)
{
    const auto grant = token("grant");
    m_grants[grant] = {.email = email, .ends = now + grantLife};
    return "grant=" + escapeAll(grant.toUtf8());
}

Reply WebDoor::post(const QByteArray& target, const QByteArray& body, const QByteArray& host, WallTime now)
{
    const auto object = QJsonDocument::fromJson(body).object();
    if (target == "/sign-in/passkey/options")
        return jsonReply(m_passkeys.challenge(now));
    if (target == "/sign-in/passkey/add") {
        m_passkeys.add(object);
        return jsonReply({});
    }
    const auto email = m_passkeys.accountOf(object, QStringLiteral("http://") + QString::fromLatin1(host), now);
    auto answer = jsonReply({{QStringLiteral("items"), QString::fromLatin1(grantFor(email, now))}});
    answer.headers += remember(email.toLatin1(), "3600");
    return answer;
}

QString WebDoor::redeem(const QString& grant, WallTime now)
{
    const auto granted = m_grants.take(grant);
    return granted.ends > now ? granted.email : QString();
}

} // namespace palvera::local
