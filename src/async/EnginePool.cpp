#include "async/EnginePool.h"

namespace palvera {

boost::asio::thread_pool& enginePool()
{
    static auto* const pool = new boost::asio::thread_pool(16);
    return *pool;
}

} // namespace palvera
