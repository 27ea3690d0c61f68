#pragma once

#include "controls/Fonts.h"
#include "tests/support/Screen.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

#include <ctime>

#include <algorithm>
#include <iostream>
#include <vector>

namespace palvera::bench {

inline double seconds(const timespec& time)
{
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

/// Processor time of the calling thread.
inline double threadTime()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return seconds(now);
}

/// Lets the program do what it does by itself. (Screen::waitUntil looks all the time, which costs what is measured.)
inline void pass(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Processor time of the main thread from `act` until the next picture is shown.
inline double untilShown(Screen& screen, const std::function<void()>& act)
{
    bool isShown = false;
    auto connection = QObject::connect(&screen.window(), &QQuickWindow::frameSwapped, [&] { isShown = true; });
    auto began = threadTime();
    act();
    while (!isShown)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    auto took = threadTime() - began;
    QObject::disconnect(connection);
    return took;
}

/// Says what `times` come to. Whether the worst meets the goal.
inline bool report(const char* what, std::vector<double> times, double goal)
{
    std::ranges::sort(times);
    std::cout << what << ": median " << times[times.size() / 2] * 1000 << " ms, worst " << times.back() * 1000
              << " ms of " << times.size() << "; goal " << goal * 1000 << " ms" << std::endl;
    return times.back() <= goal;
}

/// Runs a `Bench` without a display. The program's exit code.
template <class Bench>
int runOffscreen(int count, char** arguments)
{
    QTemporaryDir runtime;
    qputenv("XDG_RUNTIME_DIR", runtime.path().toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication application(count, arguments);
    loadFonts();
    testing::GTEST_FLAG(throw_on_failure) = true; // what a test would be told of ends the program
    testing::InitGoogleTest(&count, arguments);
    return Bench().run() ? 0 : 1;
}

} // namespace palvera::bench
