#include "localplatform/Pages.h"

#include "localplatform/Accounts.h"
#include "localplatform/Escapes.h"

namespace palvera::local {

namespace {

const QByteArray style = "body{font:16px system-ui;max-width:32rem;margin:4rem auto;padding:0 1rem}"
                         "a,button{display:block;box-sizing:border-box;width:100%;padding:.7rem 1rem;margin:.5rem 0;"
                         "border:1px solid #bbb;border-radius:8px;background:none;font:inherit;text-align:left;"
                         "color:inherit;text-decoration:none}[hidden]{display:none}a:hover,a:focus,button:hover,button:"
                         "focus{border-color:#36c}small{color:#666}"
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

/// What the scripts of the pages share: bytes to base64url and back, and a question to the platform.
const QByteArray shared = R"(
const text = bytes => btoa(String.fromCharCode(...new Uint8Array(bytes)))
  .replace(/\+/g, '-').replace(/\//g, '_').replace(/=/g, '');
const bytes = text => Uint8Array.from(atob(text.replace(/-/g, '+').replace(/_/g, '/')), each => each.charCodeAt(0));
const say = text => { document.getElementById('said').textContent = text; };
async function ask(path, body = {}) {
  const answer = await fetch('/sign-in/passkey/' + path, {method: 'POST', body: JSON.stringify(body)});
  const object = await answer.json();
  if (!answer.ok) throw new Error(object.message);
  return object;
}
)";

const QByteArray usePasskey = R"(
async function usePasskey() {
  try {
    const {options, challengeId} = await ask('options');
    const passkey = await navigator.credentials.get({publicKey: {
      challenge: bytes(options.challenge), rpId: options.rpId, userVerification: options.userVerification,
      allowCredentials: options.allowCredentials.map(each => ({type: each.type, id: bytes(each.id)}))}});
    const {clientDataJSON, authenticatorData, signature} = passkey.response;
    const {items} = await ask('answer', {challengeId, response: {
      id: passkey.id, rawId: text(passkey.rawId), type: passkey.type, response: {
        clientDataJSON: text(clientDataJSON), authenticatorData: text(authenticatorData), signature: text(signature)}}});
    const back = document.getElementById('back');
    back.href = 'palvera://sign-in?' + items;
    back.hidden = false;
    say('You are signed in. You can close this page.');
    location.href = back.href;
  } catch (failure) {
    say(failure.message);
  }
}
)";

const QByteArray makePasskey = R"(
async function makePasskey(email, name) {
  try {
    const made = await navigator.credentials.create({publicKey: {
      challenge: crypto.getRandomValues(new Uint8Array(32)), rp: {id: 'localhost', name: 'Palvera'},
      user: {id: new TextEncoder().encode(email), name: email, displayName: name},
      pubKeyCredParams: [{type: 'public-key', alg: -7}, {type: 'public-key', alg: -257}],
      authenticatorSelection: {residentKey: 'preferred', userVerification: 'required'}}});
    await ask('add', {email, id: made.id, publicKey: text(made.response.getPublicKey())});
    say('That passkey signs ' + name + ' in.');
  } catch (failure) {
    say(failure.message);
  }
}
)";

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
                                    "<button onclick=\"usePasskey()\">Use your passkey</button>"
                                    "<p id=\"said\" role=\"status\"></p><a id=\"back\" hidden>Back to Palvera</a>"
                                    "<a href=\"/sign-in/finish\">Turn the sign-in down</a>"
                                    "<a href=\"/sign-in/passkeys\">Make a passkey</a>"
                                    "<script>" +
                                    shared + usePasskey + "</script>");
}

QByteArray passkeysPage()
{
    QByteArray buttons;
    for (const auto& account : sampleAccounts())
        buttons += QByteArray("<button onclick=\"makePasskey('") + account.email + "', '" + account.name + "')\">" +
                   account.name + "</button>";
    return page("Make a passkey", "<h1>Make a passkey</h1><p>For which account?</p>" + buttons +
                                      "<p id=\"said\" role=\"status\"></p><a href=\"/sign-in?native=1\">Sign in</a>"
                                      "<script>" +
                                      shared + makePasskey + "</script>");
}

QByteArray endPage(const QByteArray& text, const QByteArray& items)
{
    return page("Palvera", "<p>" + text + "</p><a id=\"back\" href=\"palvera://sign-in?" + items +
                               "\">Back to Palvera</a><a href=\"/sign-in/forget\">Sign in as somebody else</a>"
                               "<script>location.href = document.getElementById('back').href</script>");
}

} // namespace palvera::local
