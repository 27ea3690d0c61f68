#include "app/signin/WaysIn.h"

#include "async/TaskGroup.h"
#include "http/NetworkPath.h"
#include "service/API.h"
#include "service/SignInOperations.h"

namespace palvera {

using namespace std::chrono_literals;

void WaysIn::ask(std::function<bool()> isWelcome)
{
    m_tasks.stop();
    m_config.reset();
    m_isLoading = true;
    m_isLate = false;
    Q_EMIT changed();
    m_tasks.start(keepAsking(std::move(isWelcome)));
    m_tasks.start(noteLate());
}

Task<void> WaysIn::keepAsking(std::function<bool()> isWelcome)
{
    m_config = (co_await answerOf(authConfig(m_environment.api))).value;
    m_isLoading = false;
    Q_EMIT changed();
    int tries = 0;
    while (!m_config && isWelcome()) {
        tries = co_await untilNextTry(tries, m_environment.network, m_environment.clock);
        if (m_config || !isWelcome() || !m_environment.api.canBeAsked(m_environment.network))
            continue;
        auto answer = co_await answerOf(authConfig(m_environment.api));
        if (m_config || !answer.value || !isWelcome())
            continue;
        m_config = std::move(answer.value);
        Q_EMIT changed();
    }
}

Task<bool> WaysIn::askNow()
{
    if (m_config)
        co_return true;
    m_config = (co_await answerOf(authConfig(m_environment.api))).value;
    if (m_config)
        Q_EMIT changed();
    co_return m_config.has_value();
}

Task<void> WaysIn::noteLate()
{
    co_await m_environment.clock.sleep(1500ms);
    if (!m_isLoading)
        co_return;
    m_isLate = true;
    Q_EMIT changed();
}

} // namespace palvera
