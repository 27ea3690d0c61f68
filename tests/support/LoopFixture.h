#pragma once

#include <QCoreApplication>
#include <QTimer>
#include <qtestsupport_core.h>

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
    static bool pumpUntil(const std::function<bool()>& reached) { return QTest::qWaitFor(reached, 10'000); }
};

} // namespace palvera
