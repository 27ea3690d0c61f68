#include "session/BrowserSignIn.h"

#include "async/TaskGroup.h"
#include "session/SignInDoorError.h"

#include <boost/asio/this_coro.hpp>

#include <QScopeGuard>

namespace palvera {

struct BrowserSignIn::Attempt {
    QByteArray address;
    std::shared_ptr<void> listening;
    Event over;
    std::optional<QString> callback = {};
};

BrowserSignIn::BrowserSignIn(Environment environment, QObject* parent)
    : QObject(parent), m_environment(std::move(environment))
{}

Task<QString> BrowserSignIn::signIn(QByteArray address)
{
    assert(!m_attempt);
    const auto attempt = std::make_shared<Attempt>(
        address, m_environment.listen(), Event(co_await boost::asio::this_coro::executor)); // before the browser is out
    m_attempt = attempt;
    const auto over = qScopeGuard([this, attempt] {
        if (m_attempt == attempt)
            end(Taken::late);
    });
    if (!m_environment.show(address))
        throw SignInDoorError(QObject::tr("The sign-in window could not open."));
    Q_EMIT waitingChanged();
    const auto first = co_await firstOf(attempt->over.wait(), m_environment.clock.sleep(longestWait));
    if (attempt->callback)
        co_return *attempt->callback;
    if (auto failure = std::visit([](const auto& ended) { return ended.failure; }, first))
        std::rethrow_exception(failure);
    if (first.index() == 0)
        throw SignInDoorError::byTheUser();
    throw SignInDoorError(QObject::tr("The sign-in window closed before it finished."));
}

/// Takes the attempt out, so that nothing else can end it.
std::shared_ptr<BrowserSignIn::Attempt> BrowserSignIn::end(Taken next)
{
    auto attempt = std::exchange(m_attempt, nullptr);
    attempt->listening.reset();
    m_last = {next, m_environment.clock.now()};
    Q_EMIT waitingChanged();
    return attempt;
}

QByteArray BrowserSignIn::address() const
{
    return m_attempt ? m_attempt->address : QByteArray();
}

void BrowserSignIn::showAgain()
{
    if (m_attempt)
        m_environment.show(m_attempt->address);
}

void BrowserSignIn::cancel()
{
    if (m_attempt)
        end(Taken::late)->over.set();
}

BrowserSignIn::Taken BrowserSignIn::take(const QString& callback)
{
    if (!m_attempt) {
        const bool isRemembered = m_last && m_environment.clock.now() - m_last->at < memory;
        return isRemembered ? m_last->next : Taken::unasked;
    }
    const auto attempt = end(Taken::again);
    attempt->callback = callback;
    attempt->over.set();
    return Taken::used;
}

} // namespace palvera
