#pragma once

#include "async/CancelFlag.h"
#include "service/Account.h"

#include <QPointer>
#include <QUuid>

#include <exception>
#include <functional>
#include <optional>

namespace palvera {

class Transfers;

/// Who is signed in, and waiting for them. Without the functions nobody can sign in while the program runs.
struct SignIns {
    std::function<std::optional<Account>()> now = {};
    std::function<Task<bool>(Account)> until = {}; ///< as Session::untilSignedIn
};

/// What one transfer does about refusals because nobody is signed in. Main thread.
class SignInWait {
public:
    /// The transfer is that of whoever is signed in now.
    explicit SignInWait(SignIns signIns)
        : m_signIns(std::move(signIns)), m_account(m_signIns.now ? m_signIns.now() : std::nullopt)
    {}

    /// After a failure of that item of `model`: where it is such a refusal, ends with true once the same user is signed
    /// in again at the same service, and shows the item as waiting until then. Else, and where the platform refuses
    /// again although it knows the user, gives false. Throws a cancellation once `flag` is stopped or the model gone.
    Task<bool> mayGoOnAfter(std::exception_ptr failure, QPointer<Transfers> model, QUuid id,
                            std::shared_ptr<CancelFlag> flag);

private:
    const SignIns m_signIns;
    const std::optional<Account> m_account;
    bool m_wasKnown = false; // at the last refusal
};

} // namespace palvera
