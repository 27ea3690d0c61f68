#include "async/WorkerThreads.h"

#include <boost/asio/steady_timer.hpp>

#include <system_error>

namespace palvera {

WorkerThreads::WorkerThreads(std::size_t count) : m_context(int(count)), m_work(m_context.get_executor())
{
    // Makes what the context waits with. Where the first socket made it, a failure would come in the middle of a run.
    [[maybe_unused]] const boost::asio::steady_timer first(m_context);
    m_threads.reserve(count);
    try {
        while (m_threads.size() < count)
            m_threads.emplace_back([this] { m_context.run(); });
    } catch (const std::system_error&) {
        if (m_threads.empty())
            throw;
    }
}

WorkerThreads::~WorkerThreads()
{
    m_context.stop();
    finish();
}

void WorkerThreads::finish()
{
    m_work.reset();
    for (auto& thread : m_threads)
        thread.join();
    m_threads.clear();
}

} // namespace palvera
