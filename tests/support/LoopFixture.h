#pragma once

#include <QCoreApplication>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace palvera {

/// Tests with an event loop, but no window.
struct LoopFixture : testing::Test {
    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};

    /// Runs the event loop until `reached` holds; false when that takes ten seconds.
    static bool pumpUntil(const std::function<bool()>& reached)
    {
        QTimer limit, tick; // the tick for what is reached without an event
        limit.setSingleShot(true);
        limit.start(10'000);
        tick.start(20);
        while (!reached() && limit.isActive())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return reached();
    }
};

} // namespace palvera
