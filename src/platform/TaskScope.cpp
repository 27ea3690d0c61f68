#include "platform/TaskScope.h"

#include "platform/Failure.h"

#include <boost/asio/co_spawn.hpp>

#include <QtGlobal>

#include <cassert>

namespace palvera {

void TaskScope::start(Task<void> task)
{
    ++m_underWay;
    boost::asio::co_spawn(m_home, runUntilStopped(m_flag, std::move(task)),
                          [this](const std::exception_ptr& failure) { end(failure); });
}

void TaskScope::stop()
{
    m_flag->stop();
    m_flag = std::make_shared<CancelFlag>();
}

Task<void> TaskScope::close()
{
    stop();
    while (m_underWay > 0)
        co_await m_nothingUnderWay.wait();
}

void TaskScope::end(const std::exception_ptr& failure)
{
    bool isHandled = !failure || isCancellation(failure);
    if (!isHandled)
        qCritical("An action let a failure out: %s", qPrintable(describe(failure)));
    assert(isHandled);
    if (--m_underWay == 0)
        m_nothingUnderWay.set();
}

} // namespace palvera
