#include "platform/appkit/NSApplication.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

// Runs all unit tests with one application object, on a Qt platform that needs no display. The tests have
// their own home directory and no session bus, so that they do not touch the user's settings and programs.
int main(int argc, char** argv) {
    const QTemporaryDir home;
    qputenv("HOME", home.path().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (home.path() + "/config").toLocal8Bit());
    qputenv("XDG_DATA_HOME", (home.path() + "/data").toLocal8Bit());
    qputenv("XDG_RUNTIME_DIR", home.path().toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null");
    // NSApplication also makes the main queue's executor. As in the program, the executor is made on the main
    // thread, because the thread sanitizer cannot see how Qt hands objects to another thread.
    const mirrolet::platform::NSApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
