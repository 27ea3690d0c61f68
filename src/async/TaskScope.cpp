#include "async/TaskScope.h"

#include "async/Failure.h"

#include <boost/asio/co_spawn.hpp>

#include <QtGlobal>

#include <cassert>
#include <new>

namespace palvera {

TaskScope::TaskScope(const Executor& home)
    : m_home(home), m_count(std::make_shared<Count>(Count{.nothing = Event(home)}))
{}

TaskScope::~TaskScope()
{
    m_flag->stop();
}

void TaskScope::start(Task<void> task)
{
    ++m_count->underWay;
    boost::asio::co_spawn(m_home, runUntilStopped(m_flag, std::move(task)),
                          [count = m_count](const std::exception_ptr& failure) { end(*count, failure); });
}

void TaskScope::stop()
{
    m_flag->stop();
    m_flag = std::make_shared<CancelFlag>();
}

Task<void> TaskScope::untilIdle()
{
    const auto count = m_count;
    while (count->underWay > 0)
        co_await count->nothing.wait();
}

Task<void> TaskScope::close()
{
    m_flag->stop(); // for good: what is being cut off may start something else
    return untilIdle();
}

void TaskScope::end(Count& count, const std::exception_ptr& failure)
{
    bool isHandled = !failure || isCancellation(failure);
    if (!isHandled)
        qCritical("An action let a failure out: %s", qPrintable(describe(failure)));
    assert(isHandled || failureAs<std::bad_alloc>(failure)); // nobody can handle that everywhere
    if (--count.underWay == 0)
        count.nothing.set();
}

} // namespace palvera
