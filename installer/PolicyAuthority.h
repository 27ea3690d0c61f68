#pragma once

#include <QDBusConnection>

#include <chrono>
#include <functional>

namespace palvera::installer {

/// Asks polkit whether somebody may install updates; it may ask the user in turn. Main thread.
class PolicyAuthority {
public:
    enum class Verdict { allowed, refused, nobodyToAsk };

    /// Polkit has `patience` to answer.
    PolicyAuthority(QDBusConnection bus, std::chrono::milliseconds patience);

    /// About whoever has the unique name `busName` on the bus, which vouches for it: the number of a process could be
    /// another's by the time of the question. `then` is called once, later; not when `context` is gone by then.
    void ask(const QString& busName, QObject* context, std::function<void(Verdict)> then);

private:
    QDBusConnection m_bus;
    const std::chrono::milliseconds m_patience;
};

} // namespace palvera::installer
