#include "localplatform/Pages.h"

#include "localplatform/Escapes.h"
#include "localplatform/SignIn.h"

namespace palvera::local {

namespace {

const QByteArray style = "body{font:16px system-ui;max-width:32rem;margin:4rem auto;padding:0 1rem}"
                         "a{display:block;padding:.7rem 1rem;margin:.5rem 0;border:1px solid #bbb;border-radius:8px;"
                         "color:inherit;text-decoration:none}a:hover,a:focus{border-color:#36c}small{color:#666}";

QByteArray accountLink(const Account& account)
{
    return "<a href=\"/sign-in/finish?account=" + escapeAll(account.email) + "\">" + account.name + " <small>" +
           account.email + "</small></a>\n";
}

} // namespace

QByteArray webSignInPage(const QString& provider, const QString& email)
{
    QByteArray first, others;
    for (const auto& account : sampleAccounts())
        (email.compare(QLatin1String(account.email), Qt::CaseInsensitive) == 0 ? first : others) +=
            accountLink(account);
    auto title = provider.isEmpty() ? QStringLiteral("Sign in to Palvera")
                                    : QStringLiteral("Sign in to Palvera with ") + provider.toHtmlEscaped();
    return "<!DOCTYPE html><html lang=\"en\"><head><meta charset=\"utf-8\"><title>" + title.toUtf8() +
           "</title><style>" + style + "</style></head><body><h1>" + title.toUtf8() +
           "</h1><p>This is the local platform: pick who you are.</p>\n" + first + others +
           "<a href=\"/sign-in/finish\">Turn the sign-in down</a></body></html>\n";
}

QByteArray grantCallback(const QString& grant)
{
    return "palvera://sign-in?grant=" + escapeAll(grant.toUtf8());
}

QByteArray errorCallback(const QByteArray& error)
{
    return "palvera://sign-in?error=" + escapeAll(error);
}

} // namespace palvera::local
