#include "transfers/SignIns.h"

#include "service/APIError.h"
#include "transfers/Transfers.h"

#include <QObject>

namespace palvera {

namespace {

Task<void> keep(Task<bool> operation, bool& result)
{
    result = co_await std::move(operation);
}

} // namespace

Task<bool> SignInWait::mayGoOnAfter(std::exception_ptr failure, QPointer<Transfers> model, QUuid id,
                                    std::shared_ptr<CancelFlag> flag)
{
    if (!m_account || !asksToSignIn(failure))
        co_return false;
    if (model)
        model->showMoving(id, Item::Waiting{.why = QObject::tr("Waiting for you to sign in")});
    bool isRenewed = false;
    co_await runUntilStopped(flag, keep(m_signIns.until(*m_account), isRenewed));
    if (!model)
        throwCancelled();
    // The refusal may be to a question that was asked before the user signed in; a second one is none of that.
    if (!isRenewed && std::exchange(m_wasKnown, true))
        co_return false;
    m_wasKnown = !isRenewed;
    model->showMoving(id, Item::Running{});
    co_return true;
}

} // namespace palvera
