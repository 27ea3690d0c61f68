#include "session/PasskeySignIn.h"

#include "async/TaskGroup.h"
#include "desktop/PasskeyService.h"
#include "http/HttpAddress.h"
#include "service/API.h"
#include "service/SignInOperations.h"
#include "session/PasskeyRules.h"
#include "session/SignInDoorError.h"

#include <QObject>

namespace palvera {

bool PasskeySignIn::isAvailable() const
{
    return m_service.isPresent();
}

Task<void> PasskeySignIn::signIn() const
{
    auto challenge = co_await passkeyChallenge(m_api);
    PasskeyBody body{.challengeId = challenge.challengeId};
    body.response = co_await assertion(std::move(challenge));
    co_await palvera::signInWithPasskey(m_api, body);
}

Task<PasskeyAssertion> PasskeySignIn::assertion(PasskeyChallenge challenge) const
{
    const auto bytes = fromBase64Url(challenge.options.challenge);
    if (!bytes || bytes->isEmpty())
        throw SignInDoorError(QObject::tr("The platform sent a challenge this app could not read."));
    const auto service = parseHttpAddress(m_api.serviceBase().origin);
    const auto host = service ? QString::fromLatin1(service->host) : QString();
    const auto relyingParty = challenge.options.rpId.value_or(host).toLower();
    if (!mayAskFor(relyingParty, host, service && service->loopback))
        throw SignInDoorError(QObject::tr("The platform asked for a passkey of another site."));
    PasskeyRequest request{.clientData = clientDataFor(toBase64Url(*bytes), relyingParty),
                           .relyingParty = relyingParty.toUtf8()};
    for (const auto& credential : challenge.options.allowCredentials.value_or(QList<PasskeyChallenge::Credential>()))
        if (auto id = fromBase64Url(credential.id))
            request.allowed.append(*std::move(id));
    const auto clientData = request.clientData;
    const auto answered = co_await answerOf(m_service.assertion(std::move(request)));
    if (failureAs<PasskeyCancelled>(answered.failure))
        throw SignInDoorError::byTheUser();
    if (auto failure = failureAs<PasskeyFailure>(answered.failure))
        throw SignInDoorError(failure->text());
    if (answered.failure)
        std::rethrow_exception(answered.failure);
    const auto& user = answered.value->user;
    co_return PasskeyAssertion{.id = toBase64Url(answered.value->credential),
                               .clientDataJSON = toBase64Url(clientData),
                               .authenticatorData = toBase64Url(answered.value->authenticatorData),
                               .signature = toBase64Url(answered.value->signature),
                               .userHandle = user.isEmpty() ? std::nullopt : std::optional(toBase64Url(user))};
}

} // namespace palvera
