#pragma once

#include <QGuiApplication>
#include <QString>

#include <chrono>

namespace palvera {

/// A program whose main thread is watched: how long any one event has held it.
///
/// The time that the thread was ready but another had the processor does not count; time that it was blocked does.
class WatchedApplication : public QGuiApplication {
public:
    using QGuiApplication::QGuiApplication;

    struct Hold {
        std::chrono::microseconds time{0};
        QString what; ///< class of the receiver and number of the event's type
    };

    bool notify(QObject* receiver, QEvent* event) override;
    /// The longest hold since the last call.
    Hold takeLongest() { return std::exchange(m_longest, {}); }

    /// What a test allows. Sanitizers slow everything down.
    static std::chrono::milliseconds limit();

private:
    int m_depth = 0;
    Hold m_longest;
};

} // namespace palvera
