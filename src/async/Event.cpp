#include "async/Event.h"

#include <boost/asio/use_awaitable.hpp>

#include <utility>

namespace palvera {

void Event::set()
{
    m_set = true;
    m_forEver.cancel();
}

Task<void> Event::wait()
{
    if (!m_set) {
        try {
            co_await m_forEver.async_wait(boost::asio::use_awaitable);
        } catch (...) {
            if (!m_set)
                throw;
        }
    }
    m_set = false;
}

} // namespace palvera
