#pragma once

#include <QGuiApplication>

#include <chrono>

namespace palvera {

/// A program whose main thread is watched: how long any one event has kept it busy.
///
/// Counted is the thread's own time on a processor, whatever else the machine does meanwhile, so that a busy machine
/// fails no test. A thread that waits, for a disk or another thread, uses none and is not seen here: how long that
/// takes is the machine's affair. What could wait is done in the background, which the tests of its owners hold.
class WatchedApplication : public QGuiApplication {
public:
    using QGuiApplication::QGuiApplication;

    struct Hold {
        std::chrono::nanoseconds time{0};
        QString what; ///< class of the receiver and number of the event's type
    };

    bool notify(QObject* receiver, QEvent* event) override;
    /// The longest hold since the last call.
    Hold takeLongest() { return std::exchange(m_longest, {}); }

    /// What a test allows: three pictures of sixty a second; whoever types or moves the mouse feels a longer stop.
    /// Sanitizers slow everything down.
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
    static constexpr std::chrono::milliseconds limit{250};
#else
    static constexpr std::chrono::milliseconds limit{50};
#endif

private:
    // Main thread only.
    bool m_isWatching = false;
    Hold m_longest;
};

} // namespace palvera
