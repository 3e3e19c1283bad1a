#include "platform/foundation/SessionBus.h"

#include "platform/foundation/GLibPointer.h"
#include "platform/foundation/Mutex.h"
#include "platform/foundation/NSLog.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <pthread.h>
#include <thread>
#include <utility>
#include <vector>

namespace mirrolet::platform {

namespace {

/// The pause before the next try to connect, in seconds. The pause doubles after each failed try.
constexpr guint firstPause = 1;
constexpr guint longestPause = 32;
constexpr auto asClient = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                            G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);

using Connection = GLibPointer<GDBusConnection>;

/// Returns the connection that was opened. Returns nullptr if opening failed, or if the connection has closed
/// again already.
Connection opened(GAsyncResult* result) {
    Connection connection(g_dbus_connection_new_for_address_finish(result, nullptr));
    if (connection && g_dbus_connection_is_closed(connection.get()))
        return nullptr;
    return connection;
}

} // namespace

// Only the thread of the session bus uses the members, except the members that `stateMutex` guards.
struct SessionBus::State {
    GMainContext* context = g_main_context_new();
    const char* address = nullptr; ///< nullptr if there is no bus.
    Connection connection;
    std::vector<Task> followers;
    guint pause = firstPause;

    Mutex stateMutex;
    ConditionVariable answered;
    bool known MIRROLET_GUARDED_BY(stateMutex) = false; ///< True once it is known whether there is a bus.
    std::vector<std::function<void()>> posted MIRROLET_GUARDED_BY(stateMutex);

    void post(std::function<void()> task);
    void attach(GLibPointer<GSource> source, GSourceFunc task);
    void runPosted();
    void beginAt(const char* place);
    void begin(Connection first);
    [[nodiscard]] bool isKnown();
    void use(Connection next);
    void connect(GAsyncReadyCallback done);
    void connectLater();
    static void connectedAgain(GObject*, GAsyncResult* result, gpointer data);
    static State* from(gpointer data) { return static_cast<State*>(data); }
};

/// Posts the task to the bus's thread. The task is handed over while `stateMutex` is locked, because the
/// thread sanitizer does not see GLib's own mutex and would report a data race.
void SessionBus::State::post(std::function<void()> task) {
    {
        const MutexLock lock(stateMutex);
        posted.push_back(std::move(task));
    }
    attach(GLibPointer<GSource>(g_idle_source_new()), [](gpointer data) -> gboolean {
        from(data)->runPosted();
        return G_SOURCE_REMOVE;
    });
}

void SessionBus::State::attach(GLibPointer<GSource> source, GSourceFunc task) {
    g_source_set_priority(source.get(), G_PRIORITY_DEFAULT);
    g_source_set_callback(source.get(), task, this, nullptr);
    g_source_attach(source.get(), context);
}

void SessionBus::State::runPosted() {
    std::vector<std::function<void()>> tasks;
    {
        const MutexLock lock(stateMutex);
        tasks.swap(posted);
    }
    for (const auto& task : tasks)
        task();
}

void SessionBus::State::beginAt(const char* place) {
    address = place;
    if (address)
        connect([](GObject*, GAsyncResult* result, gpointer data) { from(data)->begin(opened(result)); });
    else
        begin(nullptr);
}

/// Starts with the first connection, or with nullptr if there is no bus. Only the first call has an effect,
/// so a bus that answers after shieldQt() has given up is not used.
void SessionBus::State::begin(Connection first) {
    {
        const MutexLock lock(stateMutex);
        if (std::exchange(known, true))
            return;
    }
    answered.notifyAll();
    use(std::move(first));
}

bool SessionBus::State::isKnown() {
    const MutexLock lock(stateMutex);
    return known;
}

void SessionBus::State::use(Connection next) {
    // The previous connection is kept until each task of `followers` has run, because a task may still use
    // that connection.
    const auto before = std::exchange(connection, std::move(next));
    if (connection)
        g_signal_connect(connection.get(), "closed",
                         G_CALLBACK(+[](GDBusConnection*, gboolean, GError*, gpointer data) {
                             from(data)->connectLater();
                         }),
                         this);
    for (const auto& task : followers)
        task(connection.get());
}

void SessionBus::State::connect(GAsyncReadyCallback done) {
    g_dbus_connection_new_for_address(address, asClient, nullptr, nullptr, done, this);
}

/// A restarted bus has the same address. There is no notice of the restart, so the address is tried again.
void SessionBus::State::connectLater() {
    const auto seconds = std::exchange(pause, std::min(2 * pause, longestPause));
    attach(GLibPointer<GSource>(g_timeout_source_new_seconds(seconds)), [](gpointer data) -> gboolean {
        from(data)->connect(connectedAgain);
        return G_SOURCE_REMOVE;
    });
}

void SessionBus::State::connectedAgain(GObject*, GAsyncResult* result, gpointer data) {
    auto next = opened(result);
    if (!next) {
        from(data)->connectLater();
        return;
    }
    from(data)->pause = firstPause;
    from(data)->use(std::move(next));
}

SessionBus& SessionBus::shared() {
    // Never destroyed, because its thread may still run when static objects are destroyed.
    static auto* bus = new SessionBus;
    return *bus;
}

SessionBus::SessionBus() : state(new State) {
    std::thread([state = state] {
        pthread_setname_np(pthread_self(), "sessionBus");
        g_main_context_push_thread_default(state->context);
        g_main_loop_run(g_main_loop_new(state->context, FALSE));
    }).detach();
    // This call runs on a thread of its own, because it may take long. If no address is set, the call may
    // start a program and wait for it.
    std::thread([state = state] {
        const char* address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
        state->post([state, address] { state->beginAt(address); });
    }).detach();
}

void SessionBus::follow(Task task) {
    state->post([state = state, task = std::move(task)] {
        state->followers.push_back(task);
        if (state->isKnown())
            task(state->connection.get());
    });
}

void SessionBus::run(std::function<void()> task) {
    state->post(std::move(task));
}

void SessionBus::shieldQt() {
    constexpr std::chrono::milliseconds patience{400};
    {
        const MutexLock lock(state->stateMutex);
        const auto known = [this]() MIRROLET_REQUIRES(state->stateMutex) { return state->known; };
        if (state->answered.waitFor(state->stateMutex, patience, known))
            return;
    }
    NSLog("Mirrolet: the session bus does not answer; going on without it");
    // From here on Qt works without the bus. The rest of the program does the same, even if the bus answers
    // later.
    state->post([state = state] { state->begin(nullptr); });
    // Nobody listens at this address, so Qt fails at once. If the variable were unset, Qt would start a bus.
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null", 1);
}

} // namespace mirrolet::platform
