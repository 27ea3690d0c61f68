#include "http/NetworkThreads.h"

#include <stdexcept>

namespace palvera {

NetworkThreads::NetworkThreads(std::size_t count)
{
    try {
        while (m_threads.size() < count)
            m_threads.emplace_back(1);
    } catch (const std::runtime_error&) {
        if (m_threads.empty())
            throw;
    }
}

Executor NetworkThreads::next()
{
    return m_threads[m_next++ % m_threads.size()].executor();
}

} // namespace palvera
