#pragma once

#include "async/CancelFlag.h"
#include "async/Event.h"
#include "async/Task.h"

namespace palvera {

/// The coroutines that an observable object has under way. Serial executor, such as the main thread's.
///
/// Coroutines that refer to the object must be over before it goes: it awaits `close` first, unless the executor runs
/// nothing any more. Destroying the scope only cuts off what is under way.
class TaskScope {
public:
    explicit TaskScope(const Executor& home);
    ~TaskScope();
    TaskScope(const TaskScope&) = delete;
    TaskScope& operator=(const TaskScope&) = delete;

    /// Runs `task` from here on. It must deal with its own failures; one that comes out of it is a fault of the program
    /// and is logged.
    void start(Task<void> task);
    /// Cuts off what is under way. What is started later goes on.
    void stop();
    /// Ends once nothing is under way.
    Task<void> untilIdle();
    /// Cuts off what is under way, and whatever is started from here on, and ends once nothing is.
    Task<void> close();

private:
    struct Count {
        int underWay = 0;
        Event nothing;
    };
    static void end(Count& count, const std::exception_ptr& failure);

    const Executor m_home;
    std::shared_ptr<CancelFlag> m_flag = std::make_shared<CancelFlag>();
    const std::shared_ptr<Count> m_count; // shared with what is under way, which may outlive the scope
};

} // namespace palvera
