#include "async/Turns.h"

namespace palvera {

Task<Turns::Turn> Turns::take()
{
    if (m_left > 0) {
        --m_left;
        co_return Turn(this);
    }
    auto waiting = m_queue.emplace_back(std::make_shared<Waiting>(m_executor));
    try {
        co_await waiting->called.wait();
    } catch (...) {
        std::erase(m_queue, waiting);
        throw; // a turn that has come meanwhile goes back with `waiting`
    }
    co_return std::move(waiting->turn);
}

void Turns::giveBack()
{
    if (m_queue.empty()) {
        ++m_left;
        return;
    }
    auto next = m_queue.front();
    m_queue.pop_front();
    next->turn.reset(this);
    next->called.set();
}

} // namespace palvera
