#include "localplatform/Pages.h"

#include "localplatform/Accounts.h"
#include "localplatform/Escapes.h"

namespace palvera::local {

namespace {

const QByteArray style = "body{font:16px system-ui;max-width:32rem;margin:4rem auto;padding:0 1rem}"
                         "a{display:block;padding:.7rem 1rem;margin:.5rem 0;border:1px solid #bbb;border-radius:8px;"
                         "color:inherit;text-decoration:none}a:hover,a:focus{border-color:#36c}small{color:#666}"
                         "@media(prefers-color-scheme:dark){body{background:#1b1b1d;color:#eee}small{color:#aaa}}";

QByteArray accountLink(const Account& account)
{
    return "<a href=\"/sign-in/finish?account=" + escapeAll(account.email) + "\">" + account.name + " <small>" +
           account.email + "</small></a>\n";
}

QByteArray page(const QByteArray& title, const QByteArray& body)
{
    return "<!DOCTYPE html><html lang=\"en\"><head><meta charset=\"utf-8\"><meta name=\"viewport\" "
           "content=\"width=device-width\"><link rel=\"icon\" href=\"data:,\"><title>" +
           title + "</title><style>" + style + "</style></head><body>" + body + "</body></html>\n";
}

} // namespace

QByteArray signInPage(const QString& provider, const QString& email)
{
    QByteArray first, others;
    for (const auto& account : sampleAccounts())
        (email.compare(QLatin1String(account.email), Qt::CaseInsensitive) == 0 ? first : others) +=
            accountLink(account);
    auto title = provider.isEmpty() ? QStringLiteral("Sign in to Palvera")
                                    : QStringLiteral("Sign in to Palvera with ") + provider.toHtmlEscaped();
    return page(title.toUtf8(), "<h1>" + title.toUtf8() +
                                    "</h1><p>This is the local platform: pick who you are.</p>\n" + first + others +
                                    "<a href=\"/sign-in/finish\">Turn the sign-in down</a>");
}

QByteArray endPage(const QByteArray& text, const QByteArray& items)
{
    return page("Palvera", "<p>" + text + "</p><a id=\"back\" href=\"palvera://sign-in?" + items +
                               "\">Back to Palvera</a><a href=\"/sign-in/forget\">Sign in as somebody else</a>"
                               "<script>location.href = document.getElementById('back').href</script>");
}

} // namespace palvera::local
