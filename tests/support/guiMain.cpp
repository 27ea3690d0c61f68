// Runs the tests of a program with windows, without a display.

#include "controls/Fonts.h"
#include "controls/SpokenStates.h"
#include "tests/support/Watchdog.h"

#include <gmock/gmock.h>

#include <QTemporaryDir>

int main(int argc, char** argv)
{
    QTemporaryDir runtime;
    qputenv("XDG_RUNTIME_DIR", runtime.path().toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    palvera::WatchedApplication application(argc, argv);
    palvera::loadFonts();
    palvera::installSpokenStates();
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
