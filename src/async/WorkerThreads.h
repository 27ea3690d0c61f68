#pragma once

#include "async/Task.h"

#include <boost/asio/io_context.hpp>

#include <thread>
#include <vector>

namespace palvera {

/// Threads that serve one executor: as many as were asked for, or as many as the system gives.
class WorkerThreads {
public:
    /// Throws a std::runtime_error when the system gives not one thread, or no descriptors to wait with.
    explicit WorkerThreads(std::size_t count);
    /// Waits for what is running; drops what has not begun.
    ~WorkerThreads();
    /// Waits until there is nothing left to do, after which nothing is done any more.
    void finish();
    WorkerThreads(const WorkerThreads&) = delete;
    WorkerThreads& operator=(const WorkerThreads&) = delete;

    boost::asio::io_context& context() { return m_context; }
    /// Any thread.
    Executor executor() { return m_context.get_executor(); }

private:
    boost::asio::io_context m_context;
    boost::asio::executor_work_guard<boost::asio::io_context::executor_type> m_work;
    std::vector<std::thread> m_threads;
};

} // namespace palvera
