#pragma once

#include "async/Task.h"

#include <boost/asio/execution.hpp>
#include <boost/asio/execution_context.hpp>

#include <QObject>

#include <memory>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace palvera {

/// Qt's main thread as a place where coroutines run: what is posted to its executor runs inside the Qt event loop.
///
/// Make one on the main thread once there is a QCoreApplication, and destroy it there. Executors may outlive it, since
/// Asio destroys a dropped coroutine by posting to its executor: what they are given from then on is destroyed where it
/// was posted, and never runs. Timers made on the executor are served by `reactor`, which must outlive all of it.
class MainThread final : public QObject {
public:
    class Executor;

    explicit MainThread(boost::asio::execution_context& reactor);
    ~MainThread() override;

    Executor executor() const noexcept;

private:
    struct Work {
        virtual ~Work() = default;
        virtual void run() = 0;
    };
    class Queue;

    bool event(QEvent* event) override;

    const std::shared_ptr<Queue> m_queue;
};

/// What waits for the main thread. Any thread. Lives as long as its last executor.
class MainThread::Queue {
public:
    Queue(boost::asio::execution_context& served, MainThread& owner) : reactor(served), m_owner(&owner) {}

    void push(std::unique_ptr<Work> work);
    bool isWake(const QEvent& event);
    std::vector<std::unique_ptr<Work>> takeAll();
    /// Takes nothing any more and destroys what waits.
    void close();
    bool isHere() const noexcept { return std::this_thread::get_id() == m_thread; }

    boost::asio::execution_context& reactor;

private:
    const std::thread::id m_thread = std::this_thread::get_id();
    std::mutex m_lock;
    // Guarded by m_lock.
    MainThread* m_owner; // null once closed
    std::vector<std::unique_ptr<Work>> m_waiting;
};

/// Asio's executor requirements, fulfilled. Copies are the same executor.
class MainThread::Executor {
    using Blocking = boost::asio::execution::blocking_t;
    using OutstandingWork = boost::asio::execution::outstanding_work_t;
    using Relationship = boost::asio::execution::relationship_t;

public:
    boost::asio::execution_context& query(boost::asio::execution::context_t) const noexcept { return m_queue->reactor; }
    Blocking query(Blocking) const noexcept
    {
        return m_mayRunHere ? Blocking(Blocking::possibly) : Blocking(Blocking::never);
    }
    static constexpr OutstandingWork query(OutstandingWork) noexcept { return OutstandingWork::untracked; }
    static constexpr Relationship query(Relationship) noexcept { return Relationship::fork; }
    Executor require(Blocking::possibly_t) const noexcept { return {m_queue, true}; }
    Executor require(Blocking::never_t) const noexcept { return {m_queue, false}; }

    template <class Function>
    void execute(Function function) const
    {
        if (m_mayRunHere && m_queue->isHere()) { // already there: no trip through the event loop
            Function local(std::move(function)); // Asio wants the memory of what it handed over released first
            local();
            return;
        }
        m_queue->push(std::make_unique<Posted<Function>>(std::move(function)));
    }

    friend bool operator==(const Executor& a, const Executor& b) noexcept
    {
        return a.m_queue == b.m_queue && a.m_mayRunHere == b.m_mayRunHere;
    }

private:
    friend class MainThread;

    template <class Function>
    struct Posted final : Work {
        explicit Posted(Function&& posted) : function(std::move(posted)) {}
        void run() override { function(); }
        Function function;
    };

    Executor(std::shared_ptr<Queue> queue, bool mayRunHere) noexcept
        : m_queue(std::move(queue)), m_mayRunHere(mayRunHere)
    {}

    std::shared_ptr<Queue> m_queue;
    bool m_mayRunHere;
};

inline MainThread::Executor MainThread::executor() const noexcept
{
    return {m_queue, true};
}

} // namespace palvera
