#include "platform/dispatch/Executor.h"

#include <QApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// Makes the one application object of all tests, on a Qt platform without a display. The tests have a home
// directory of their own, so that they do not read or write the user's settings.
int main(int argc, char** argv) {
    const QTemporaryDir home;
    qputenv("HOME", home.path().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (home.path() + "/config").toLocal8Bit());
    qputenv("XDG_DATA_HOME", (home.path() + "/data").toLocal8Bit());
    qputenv("XDG_RUNTIME_DIR", home.path().toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    // Made on this thread, as in the program, because the thread sanitizer cannot see how Qt hands objects to
    // another thread.
    mirrolet::platform::dispatch::ExecutorSource::current().main();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
