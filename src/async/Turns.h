#pragma once

#include "async/Event.h"

#include <deque>
#include <memory>

namespace palvera {

/// Lets so many coroutines of one serial executor go on at a time, the others in the order in which they came.
class Turns {
    struct GiveBack {
        void operator()(Turns* turns) const { turns->giveBack(); }
    };

public:
    /// Lasts until it is destroyed, on that executor. `Turns` must outlive it.
    using Turn = std::unique_ptr<Turns, GiveBack>;

    Turns(Executor executor, int most) : m_executor(std::move(executor)), m_left(most) {}

    /// Whether the next one need not wait.
    bool areFree() const { return m_left > 0; }
    /// Ends when it is the caller's turn. Cancelling leaves the queue.
    Task<Turn> take();

private:
    struct Waiting {
        explicit Waiting(const Executor& executor) : called(executor) {}
        Event called;
        Turn turn;
    };

    void giveBack();

    const Executor m_executor;
    int m_left;
    std::deque<std::shared_ptr<Waiting>> m_queue;
};

} // namespace palvera
