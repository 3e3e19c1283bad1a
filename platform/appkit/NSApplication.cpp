#include "platform/appkit/NSApplication.h"

#include "platform/appkit/DesktopAppearance.h"
#include "platform/appkit/Restart.h"
#include "platform/appkit/SignalWatcher.h"
#include "platform/coregraphics/DisplayScale.h"
#include "platform/dispatch/DispatchQueue.h"
#include "platform/dispatch/Executor.h"
#include "platform/dispatch/ThreadExecutor.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/SessionBus.h"
#include "platform/foundation/UserDefaults.h"

#include <QApplication>
#include <QIcon>
#include <QScreen>
#include <QWidget>

#include <chrono>
#include <cstdlib>
#include <mutex>
#include <utility>

namespace mirrolet::platform {

namespace {

// A task normally ends within milliseconds. A task that reads from a dead network mount may never end.
constexpr std::chrono::seconds longestWaitForTasks{2};

NSApplication* theApplication = nullptr;

/// Handles a message of Qt. If Qt's connection to the server is broken, ends the process with serverLost(),
/// because Qt itself would end the process without writing the user defaults. Logs every other warning.
void takeQtMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.startsWith(QLatin1String("The X11 connection broke")))
        NSApplication::serverLost();
    if (type == QtDebugMsg || type == QtInfoMsg)
        return;
    NSLog(qFormatLogMessage(type, context, message).toStdString());
}

void prepareEnvironment() {
    // The X11 backend works on the windows that Qt makes, so Qt has to make X11 windows. In a Wayland session
    // Qt would otherwise make Wayland windows.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb");
    // Qt's own event loop is chosen, because it wakes up less often than Qt's event loop on top of GLib. No
    // code on the main thread needs GLib's event loop.
    qputenv("QT_NO_GLIB", "1");
    // Qt must not register with a session manager. At the next login, the session manager would start the
    // program again, and the autostart entry would start a second process.
    qunsetenv("SESSION_MANAGER");
}

void followDisplayScale(QGuiApplication& application) {
    const auto take = [](const QScreen* screen) {
        if (screen)
            DisplayScale::setCurrent(screen->devicePixelRatio());
    };
    take(QGuiApplication::primaryScreen());
    QObject::connect(&application, &QGuiApplication::primaryScreenChanged, &application, take);
}

} // namespace

struct NSApplication::State {
    State(int& argc, char** argv) : qt(argc, argv) {}

    QApplication qt;
    std::weak_ptr<NSApplicationDelegate> delegate;
    bool terminating = false;
};

NSApplication::NSApplication(int& argc, char** argv) {
    prepareEnvironment();
    SessionBus::shared().shieldQt();
    qInstallMessageHandler(takeQtMessage);
    QCoreApplication::setApplicationName(QStringLiteral("mirrolet"));
    QCoreApplication::setApplicationVersion(QStringLiteral(MIRROLET_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("app.mirrolet.Mirrolet"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    state = std::make_unique<State>(argc, argv);
    followDisplayScale(state->qt);
    DesktopAppearance::follow();
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/mirrolet/app.mirrolet.Mirrolet.svg")));
    // The main executor is made when it is first used. This call makes it on the main thread, before another
    // thread can post to it.
    (void)DispatchQueue::main().executor()->now();
    theApplication = this;
}

NSApplication::~NSApplication() {
    theApplication = nullptr;
}

NSApplication& NSApplication::shared() {
    if (!theApplication)
        std::abort();
    return *theApplication;
}

void NSApplication::setDelegate(std::weak_ptr<NSApplicationDelegate> delegate) {
    state->delegate = std::move(delegate);
}

void NSApplication::activateIgnoringOtherApps() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->windowType() == Qt::Window)
            window->raise();
}

void NSApplication::terminate() {
    if (std::exchange(state->terminating, true))
        return;
    if (const auto delegate = state->delegate.lock())
        delegate->applicationWillTerminate();
    // The program quits only after the tasks that the delegate has posted, because a stopped mirror closes
    // its panel on the next turn of the event loop.
    DispatchQueue::main().async([] { QCoreApplication::quit(); });
}

void NSApplication::reopen() {
    if (const auto delegate = state->delegate.lock())
        delegate->applicationShouldHandleReopen();
}

int NSApplication::run() {
    const SignalWatcher signals([this] { terminate(); });
    if (const auto delegate = state->delegate.lock())
        delegate->applicationDidFinishLaunching();
    const int status = QApplication::exec();
    UserDefaults::standard().flush();
    // If a task still runs, the process exits at once, because destroying the queues and the backend under a
    // running task would crash. No setting is lost, because every change is on the disk by now.
    if (!dispatch::ThreadExecutor::awaitTasks(longestWaitForTasks))
        std::_Exit(status);
    return status;
}

void NSApplication::serverLost() {
    static std::once_flag once;
    // Qt's connection and the backend's connection to the server break at the same moment, on two threads.
    // The second thread waits here until the process ends.
    std::call_once(once, [] {
        NSLog("Mirrolet: the connection to the X server was lost");
        UserDefaults::standard().flush();
        // A Wayland compositor starts XWayland again by itself, and the session goes on.
        if (qEnvironmentVariableIsSet("WAYLAND_DISPLAY"))
            restartProgram();
        // The process exits at once, because objects that use the server can no longer be destroyed properly.
        std::_Exit(EXIT_FAILURE);
    });
    std::abort();
}

} // namespace mirrolet::platform
