#pragma once

#include "async/Task.h"
#include "service/PasskeyRecords.h"

namespace palvera {

class API;
class PasskeyService;

/// Signs in with a passkey that something plugged into this machine holds. Main thread.
class PasskeySignIn {
public:
    /// Both outlive it and its operations.
    PasskeySignIn(API& api, PasskeyService& service) : m_api(api), m_service(service) {}

    PasskeyService& service() const { return m_service; }
    /// Whether there is something to sign in with.
    bool isAvailable() const;
    /// Has a challenge of the platform answered and sends the answer: then somebody is signed in. Throws
    /// SignInDoorError, and what the service's operations throw. Cancelling puts the question away.
    Task<void> signIn() const;
    /// What a passkey signs for `challenge`. Throws SignInDoorError.
    Task<PasskeyAssertion> assertion(PasskeyChallenge challenge) const;

private:
    API& m_api;
    PasskeyService& m_service;
};

} // namespace palvera
