#include "tests/support/Watchdog.h"

#include <QEvent>
#include <QFile>

namespace palvera {

using namespace std::chrono_literals;

namespace {

/// How long this thread has waited for a processor since it began.
std::chrono::nanoseconds waited()
{
    QFile statistics(QStringLiteral("/proc/thread-self/schedstat"));
    if (!statistics.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return 0ns;
    const auto numbers = statistics.readAll().split(' '); // time on a processor, time in the queue, slices
    return std::chrono::nanoseconds(numbers.value(1).toLongLong());
}

} // namespace

std::chrono::milliseconds WatchedApplication::limit()
{
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
    return 250ms;
#else
    return 50ms;
#endif
}

bool WatchedApplication::notify(QObject* receiver, QEvent* event)
{
    if (m_depth > 0)
        return QGuiApplication::notify(receiver, event);
    const QString what =
        QStringLiteral("%1, event %2").arg(QLatin1String(receiver->metaObject()->className())).arg(event->type());
    const auto began = std::chrono::steady_clock::now();
    const auto waitedBefore = waited();
    ++m_depth;
    const bool handled = QGuiApplication::notify(receiver, event);
    --m_depth;
    const auto held = std::chrono::steady_clock::now() - began - (waited() - waitedBefore);
    if (held > m_longest.time)
        m_longest = {.time = std::chrono::duration_cast<std::chrono::microseconds>(held), .what = what};
    return handled;
}

} // namespace palvera
