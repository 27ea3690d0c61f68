#include "desktop/SleepInhibitor.h"

#include "files/FileDescriptor.h"

#include <QObject>

#include <array>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

namespace palvera {

namespace {

constexpr auto service = "org.freedesktop.login1";
constexpr auto path = "/org/freedesktop/login1";
constexpr auto managerInterface = "org.freedesktop.login1.Manager";

struct CloseBus {
    void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
};
using Bus = std::unique_ptr<sd_bus, CloseBus>;

/// Until the moment `microseconds` of the monotonic clock, for poll: -1 for none.
int millisecondsUntil(std::uint64_t microseconds)
{
    if (microseconds == UINT64_MAX)
        return -1;
    using std::chrono::steady_clock;
    const auto left = std::chrono::microseconds(microseconds) - steady_clock::now().time_since_epoch();
    return std::max(0, int(std::chrono::ceil<std::chrono::milliseconds>(left).count()));
}

} // namespace

/// A lock of the login manager's, and what it says of what the lock is against.
struct LoginLock {
    const char* against;
    const char* mode;
    const char* signal;
    int heeded; ///< the announcement that is passed on: 1 that it begins, 0 that it is over
};

namespace {

constexpr LoginLock sleepLock{"sleep:idle", "block", "PrepareForSleep", 0};
constexpr LoginLock shutdownLock{"shutdown", "delay", "PrepareForShutdown", 1};

} // namespace

/// The login manager, and the lock it gave: an open file, which lets the machine go on when it is closed.
///
/// A thread of its own talks to the bus, over a connection that never blocks: one that accepts and stays silent costs
/// nobody anything. It starts at the first `hold` or `watch`. Apart from that thread, operations are called on the main
/// thread.
class LoginManager final : public QObject {
public:
    LoginManager(const QString& address, const LoginLock& lock) : m_address(address.toUtf8()), m_kind(lock) {}
    ~LoginManager() override
    {
        tell([this] { m_ends = true; });
        if (m_thread.joinable())
            m_thread.join();
    }

    void hold(const QString& why)
    {
        tell([&] {
            if (std::exchange(m_wanted, true))
                return;
            m_why = why.toUtf8();
            ++m_holds;
        });
        startThread();
    }
    void release()
    {
        tell([this] { m_wanted = false; });
    }

    /// Has `heeded` called from here on, whether or not anything is held.
    void watch()
    {
        tell([this] { m_watches = true; });
        startThread();
    }

    std::function<void()> heeded;

private:
    void startThread()
    {
        if (m_thread.joinable() || m_wake.number() < 0) // it could not be told to end
            return;
        try {
            m_thread = std::thread([this] { run(); });
        } catch (const std::system_error&) { // NOLINT(bugprone-empty-catch): then it may sleep, and wakes unnoticed
        }
    }

    template <class Change>
    void tell(Change change)
    {
        {
            std::lock_guard guard(m_mutex);
            change();
        }
        const std::uint64_t once = 1;
        (void)!::write(m_wake.number(), &once, sizeof once);
    }

    // On the thread.

    void run()
    {
        while (obey()) {
            process();
            wait();
        }
        m_lock = FileDescriptor();
        m_bus.reset();
    }

    /// Does what was told; false when it is to end.
    bool obey()
    {
        std::lock_guard guard(m_mutex);
        if (m_ends)
            return false;
        if (std::exchange(m_watches, false))
            connect();
        if (!m_wanted)
            m_lock = FileDescriptor();
        else if (std::exchange(m_asked, m_holds) != m_holds)
            ask();
        return true;
    }

    void ask()
    {
        if (!m_bus && !connect())
            return;
        sd_bus_call_method_async(m_bus.get(), nullptr, service, path, managerInterface, "Inhibit", &taken, this, "ssss",
                                 m_kind.against, "Palvera", m_why.constData(), m_kind.mode);
    }

    bool connect()
    {
        sd_bus* made = nullptr;
        bool isOpen = m_address.isEmpty() ? sd_bus_open_system(&made) >= 0 : open(&made);
        m_bus.reset(made);
        if (!isOpen)
            m_bus.reset();
        return m_bus && sd_bus_match_signal_async(m_bus.get(), nullptr, service, path, managerInterface, m_kind.signal,
                                                  &preparing, nullptr, this) >= 0;
    }

    bool open(sd_bus** made) const
    {
        return sd_bus_new(made) >= 0 && sd_bus_set_address(*made, m_address.constData()) >= 0 &&
               sd_bus_set_bus_client(*made, 1) >= 0 && sd_bus_start(*made) >= 0;
    }

    void process()
    {
        int result = 0;
        while (m_bus && (result = sd_bus_process(m_bus.get(), nullptr)) > 0)
            ;
        if (result < 0) // the next `hold` connects anew
            m_bus.reset();
    }

    void wait()
    {
        std::array<pollfd, 2> files{
            {{.fd = m_wake.number(), .events = POLLIN, .revents = 0}, {.fd = -1, .events = 0, .revents = 0}}};
        std::uint64_t until = UINT64_MAX;
        if (m_bus) {
            files[1].fd = sd_bus_get_fd(m_bus.get());
            files[1].events = short(sd_bus_get_events(m_bus.get()));
            sd_bus_get_timeout(m_bus.get(), &until);
        }
        ::poll(files.data(), files.size(), millisecondsUntil(until));
        std::uint64_t told = 0;
        (void)!::read(m_wake.number(), &told, sizeof told);
    }

    /// Keeps the lock in an answer if it is still wanted. One that is not is closed with the answer.
    static int taken(sd_bus_message* answer, void* self, sd_bus_error*)
    {
        auto& manager = *static_cast<LoginManager*>(self);
        int lock = -1;
        if (sd_bus_message_is_method_error(answer, nullptr) || sd_bus_message_read(answer, "h", &lock) < 0)
            return 0;
        std::lock_guard guard(manager.m_mutex);
        if (manager.m_wanted)
            manager.m_lock = FileDescriptor(::fcntl(lock, F_DUPFD_CLOEXEC, 0));
        return 0;
    }

    static int preparing(sd_bus_message* signal, void* self, sd_bus_error*)
    {
        auto* manager = static_cast<LoginManager*>(self);
        int begins = 0;
        if (sd_bus_message_read(signal, "b", &begins) < 0 || begins != manager->m_kind.heeded)
            return 0;
        QMetaObject::invokeMethod(manager, [manager] {
            if (manager->heeded)
                manager->heeded();
        });
        return 0;
    }

    const QByteArray m_address; // empty: the system's bus
    const LoginLock m_kind;
    const FileDescriptor m_wake{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
    std::thread m_thread;

    std::mutex m_mutex;
    // Guarded by m_mutex.
    bool m_wanted = false;
    bool m_watches = false; // until it is connected
    bool m_ends = false;
    QByteArray m_why;
    int m_holds = 0;

    // The thread only.
    Bus m_bus;
    FileDescriptor m_lock;
    int m_asked = 0; // the number of the last `hold` that the login manager was asked for
};

WakeWatch::WakeWatch(std::function<void()> woken, const QString& busAddress)
    : m_manager(std::make_unique<LoginManager>(busAddress, sleepLock))
{
    m_manager->heeded = std::move(woken);
    m_manager->watch();
}

WakeWatch::~WakeWatch() = default;

ShutdownWatch::ShutdownWatch(const QString& why, std::function<void()> ending, const QString& busAddress)
    : m_manager(std::make_unique<LoginManager>(busAddress, shutdownLock))
{
    m_manager->heeded = std::move(ending);
    m_manager->hold(why);
}

ShutdownWatch::~ShutdownWatch() = default;

SystemSleepInhibitor::SystemSleepInhibitor() : SystemSleepInhibitor(QString()) {}

SystemSleepInhibitor::SystemSleepInhibitor(const QString& address)
    : m_manager(std::make_unique<LoginManager>(address, sleepLock))
{}

SystemSleepInhibitor::~SystemSleepInhibitor() = default;

void SystemSleepInhibitor::hold(const QString& why)
{
    m_manager->hold(why);
}

void SystemSleepInhibitor::release()
{
    m_manager->release();
}

void SystemSleepInhibitor::onWake(std::function<void()> woken)
{
    m_manager->heeded = std::move(woken);
}

} // namespace palvera
