#include "http/NetworkThreads.h"

namespace palvera {

NetworkThreads::NetworkThreads(std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        m_threads.emplace_back(1);
}

Executor NetworkThreads::next()
{
    return m_threads[m_next++ % m_threads.size()].get_executor();
}

} // namespace palvera
