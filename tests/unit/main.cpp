#include "platform/appkit/NSApplication.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

// Makes the one application object of all tests, on a Qt platform without a display. The tests have a home
// directory of their own and no session bus, so that they do not read or write the user's settings or talk to
// the user's programs.
int main(int argc, char** argv) {
    const QTemporaryDir home;
    qputenv("HOME", home.path().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (home.path() + "/config").toLocal8Bit());
    qputenv("XDG_DATA_HOME", (home.path() + "/data").toLocal8Bit());
    qputenv("XDG_RUNTIME_DIR", home.path().toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null");
    // The application also makes the main queue's executor on this thread, as in the program, because the
    // thread sanitizer cannot see how Qt hands objects to another thread.
    const mirrolet::platform::NSApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
