#pragma once

#include "platform/CancelFlag.h"
#include "platform/Event.h"
#include "platform/Task.h"

namespace palvera {

/// The coroutines that an observable object has under way. Serial executor, such as the main thread's.
class TaskScope {
public:
    explicit TaskScope(const Executor& home) : m_home(home), m_nothingUnderWay(home) {}
    TaskScope(const TaskScope&) = delete;
    TaskScope& operator=(const TaskScope&) = delete;

    /// Runs `task` from here on. It must deal with its own failures; one that comes out of it is a fault of the program
    /// and is logged.
    void start(Task<void> task);
    /// Cuts off what is under way. What is started later goes on.
    void stop();
    /// Cuts off what is under way and ends once nothing is. To be awaited before the scope is destroyed, unless the
    /// executor runs nothing any more.
    Task<void> close();

private:
    void end(const std::exception_ptr& failure);

    const Executor m_home;
    std::shared_ptr<CancelFlag> m_flag = std::make_shared<CancelFlag>();
    int m_underWay = 0;
    Event m_nothingUnderWay;
};

} // namespace palvera
