#pragma once

#include "async/Failure.h"

namespace palvera {

/// Why a way in that leads through something else than the program's own window did not open, or what became of it.
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

} // namespace palvera
