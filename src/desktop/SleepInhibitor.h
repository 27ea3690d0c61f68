#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace palvera {

/// Keeps the machine from falling asleep while something is moving, and says when it has woken all the same. Main
/// thread.
class SleepInhibitor {
public:
    virtual ~SleepInhibitor() = default;

    /// Keeps the machine awake until `release`; `why` is shown to users who list what keeps it awake. A second call
    /// does nothing.
    virtual void hold(const QString& why) = 0;
    /// Lets it sleep at once. Does nothing when it may already.
    virtual void release() = 0;
    /// Has `woken` called after each sleep, in place of what was called before; an empty one for nothing. Sleep that
    /// begins and ends before the first `hold` may go unnoticed.
    virtual void onWake(std::function<void()> woken) = 0;
};

class LoginManager;

/// Says when the machine has woken from sleep, by the login manager's (logind) word, and holds nothing. Where there is
/// no bus or no login manager it says nothing. Never blocks. Main thread.
class WakeWatch {
public:
    /// `woken` is called from the event loop. `busAddress` is the system's bus, unless given.
    explicit WakeWatch(std::function<void()> woken, const QString& busAddress = {});
    ~WakeWatch();
    WakeWatch(const WakeWatch&) = delete;
    WakeWatch& operator=(const WakeWatch&) = delete;

private:
    const std::unique_ptr<LoginManager> m_manager;
};

/// Has the login manager (logind) wait with a shutdown of the machine until this object is gone, which it does for some
/// seconds, and says when one begins. Else as WakeWatch.
class ShutdownWatch {
public:
    /// `why` is shown to users who list what a shutdown waits for. `ending` is called from the event loop.
    ShutdownWatch(const QString& why, std::function<void()> ending, const QString& busAddress = {});
    ~ShutdownWatch();
    ShutdownWatch(const ShutdownWatch&) = delete;
    ShutdownWatch& operator=(const ShutdownWatch&) = delete;

private:
    const std::unique_ptr<LoginManager> m_manager;
};

/// The login manager's (logind) lock against sleep and idling, over the system's message bus. Where there is no bus or
/// no login manager it does nothing. Never blocks on either.
class SystemSleepInhibitor final : public SleepInhibitor {
public:
    SystemSleepInhibitor();
    /// Talks to the bus at `address` instead of the system's.
    explicit SystemSleepInhibitor(const QString& address);
    ~SystemSleepInhibitor() override;

    void hold(const QString& why) override;
    void release() override;
    void onWake(std::function<void()> woken) override;

private:
    const std::unique_ptr<LoginManager> m_manager;
};

} // namespace palvera
