#include "platform/appkit/NSApplication.h"

#include "platform/appkit/DesktopAppearance.h"
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

// A healthy task needs some milliseconds. One that reads from a dead network mount may never end.
constexpr std::chrono::seconds longestWaitForTasks{2};

NSApplication* theApplication = nullptr;

/// Ends the process in order when Qt reports that its own connection to the server is broken. Qt would end
/// the process without writing the user defaults, while other threads run. Logs every
/// other warning of Qt.
void takeQtMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.startsWith(QLatin1String("The X11 connection broke")))
        NSApplication::serverLost();
    if (type == QtDebugMsg || type == QtInfoMsg)
        return;
    NSLog(qFormatLogMessage(type, context, message).toStdString());
}

void prepareEnvironment() {
    // The panels are X11 windows, so Qt has to speak X11 too, even where it would rather speak to a Wayland
    // compositor.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb");
    // Qt's plain event loop wakes up less often than Qt's event loop on top of GLib. Nothing here needs
    // GLib's.
    qputenv("QT_NO_GLIB", "1");
    // A session manager would start a second process, because the autostart entry starts one already.
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
    // The main executor is made here, on the main thread, before other threads post to it.
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
    // Quits after the tasks that the delegate has posted, because a stopped mirror closes its panel on the
    // next turn of the event loop.
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
    // Every change is on the disk by now, so nothing is lost if a task still runs. The process then exits at
    // once, because destroying the queues and the desktop under a running task would crash.
    if (!dispatch::ThreadExecutor::awaitTasks(longestWaitForTasks))
        std::_Exit(status);
    return status;
}

void NSApplication::serverLost() {
    static std::once_flag once;
    // Both connections to the server break at the same moment. The second thread that notices waits here
    // until the process ends.
    std::call_once(once, [] {
        NSLog("Mirrolet: the connection to the X server was lost");
        UserDefaults::standard().flush();
        std::_Exit(EXIT_FAILURE); // Objects that point at the server cannot be destroyed in order any more.
    });
    std::abort();
}

} // namespace mirrolet::platform
