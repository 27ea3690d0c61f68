#pragma once

#include "async/Failure.h"
#include "async/Task.h"

#include <QString>

namespace palvera {

// The ways in that lead through something else than the program's own window.

/// Why a door did not open, or what became of it.
class SignInDoorError : public Failure {
public:
    enum class Kind {
        failed,
        cancelled, ///< by the user, who need not be told
    };

    explicit SignInDoorError(const QString& text) : Failure(text) {}
    static SignInDoorError byTheUser() { return SignInDoorError(Kind::cancelled); }

    Kind kind() const { return m_kind; }

private:
    explicit SignInDoorError(Kind kind) : Failure({}), m_kind(kind) {}

    Kind m_kind = Kind::failed;
};

/// A passkey that this machine, or a key plugged into it, holds.
class PasskeySignIn {
public:
    virtual ~PasskeySignIn() = default;

    /// Whether this machine can answer a challenge at all. Any thread.
    virtual bool isAvailable() const = 0;
    /// Has a challenge of the platform answered and sends the answer: then somebody is signed in. Throws
    /// SignInDoorError, and what the service's operations throw. Cancelling puts the question away.
    virtual Task<void> signIn() = 0;
};

/// Where nothing holds passkeys.
class NoPasskeySignIn final : public PasskeySignIn {
public:
    bool isAvailable() const override { return false; }
    Task<void> signIn() override;
};

} // namespace palvera
