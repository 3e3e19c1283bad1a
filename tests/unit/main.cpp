#include "platform/dispatch/Executor.h"

#include <QApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// One application object for all tests, on a platform without a display, and a home of its own, so that no
// test reads or writes the user's settings.
int main(int argc, char** argv) {
    const QTemporaryDir home;
    qputenv("HOME", home.path().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (home.path() + "/config").toLocal8Bit());
    qputenv("XDG_DATA_HOME", (home.path() + "/data").toLocal8Bit());
    qputenv("XDG_RUNTIME_DIR", home.path().toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    // Made on this thread, as in the program: the thread sanitizer cannot see how Qt hands it over.
    mirrolet::platform::dispatch::ExecutorSource::current().main();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
