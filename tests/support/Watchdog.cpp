#include "tests/support/Watchdog.h"

#include <QEvent>
#include <QThread>

#include <ctime>

namespace palvera {

namespace {

/// What this thread has had of a processor since it began.
std::chrono::nanoseconds processorTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

bool WatchedApplication::notify(QObject* receiver, QEvent* event)
{
    // Qt brings the events of every thread through here.
    if (QThread::currentThread() != thread() || std::exchange(m_isWatching, true))
        return QGuiApplication::notify(receiver, event);
    const QString what =
        QStringLiteral("%1, event %2").arg(QLatin1String(receiver->metaObject()->className())).arg(event->type());
    const auto before = processorTime();
    const bool handled = QGuiApplication::notify(receiver, event);
    m_isWatching = false;
    if (const auto held = processorTime() - before; held > m_longest.time)
        m_longest = {.time = held, .what = what};
    return handled;
}

} // namespace palvera
