#include "localplatform/WebDoor.h"

#include "localplatform/Accounts.h"
#include "localplatform/Escapes.h"
#include "localplatform/Pages.h"

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
    const auto grant = token("grant");
    m_grants[grant] = {.email = QString::fromLatin1(account->email), .ends = now + grantLife};
    auto page = htmlReply(endPage("You are signed in. You can close this page.", "grant=" + escapeAll(grant.toUtf8())));
    page.headers += remember(account->email, "3600");
    return page;
}

QString WebDoor::redeem(const QString& grant, WallTime now)
{
    const auto granted = m_grants.take(grant);
    return granted.ends > now ? granted.email : QString();
}

} // namespace palvera::local
