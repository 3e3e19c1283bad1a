#include "platform/foundation/SessionBus.h"

#include "platform/foundation/NSLog.h"

#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <optional>
#include <pthread.h>
#include <thread>
#include <utility>
#include <vector>

namespace mirrolet::platform {

struct SessionBus::State {
    GMainContext* context = g_main_context_new();
    std::mutex lock;
    std::condition_variable known;
    std::optional<GDBusConnection*> connection;
    std::vector<Task> waiting; ///< Until the connection is known.

    /// On the bus's thread. The first answer counts.
    void connected(GDBusConnection* opened) {
        std::vector<Task> tasks;
        {
            const std::lock_guard guard(lock);
            if (connection)
                return;
            connection = opened;
            tasks.swap(waiting);
        }
        known.notify_all();
        for (const auto& task : tasks)
            task(opened);
    }
};

namespace {

void onConnected(GObject*, GAsyncResult* result, gpointer data) {
    GDBusConnection* connection = g_bus_get_finish(result, nullptr);
    if (connection)
        g_dbus_connection_set_exit_on_close(connection, FALSE); // By default a lost bus kills the process.
    static_cast<SessionBus::Task*>(data)->operator()(connection);
}

gboolean runOnce(gpointer data) {
    (*static_cast<std::function<void()>*>(data))();
    return G_SOURCE_REMOVE;
}

void invoke(GMainContext* context, std::function<void()> task) {
    g_main_context_invoke_full(context, G_PRIORITY_DEFAULT, runOnce,
                               new std::function<void()>(std::move(task)),
                               [](gpointer data) { delete static_cast<std::function<void()>*>(data); });
}

} // namespace

SessionBus& SessionBus::shared() {
    static auto* bus = new SessionBus; // Never destroyed: its thread may be at work when statics end.
    return *bus;
}

SessionBus::SessionBus() : state(new State) {
    std::thread([state = state] {
        pthread_setname_np(pthread_self(), "sessionBus");
        g_main_context_push_thread_default(state->context);
        Task connected = [state](GDBusConnection* connection) { state->connected(connection); };
        g_bus_get(G_BUS_TYPE_SESSION, nullptr, onConnected, &connected);
        g_main_loop_run(g_main_loop_new(state->context, FALSE));
    }).detach();
}

void SessionBus::whenKnown(Task task) {
    std::unique_lock guard(state->lock);
    if (!state->connection) {
        state->waiting.push_back(std::move(task));
        return;
    }
    guard.unlock(); // On the bus's own thread the task runs at once, and may come back here.
    invoke(state->context, [task = std::move(task), connection = *state->connection] { task(connection); });
}

bool SessionBus::isKnown(std::chrono::milliseconds patience) {
    std::unique_lock guard(state->lock);
    return state->known.wait_for(guard, patience, [this] { return state->connection.has_value(); });
}

void SessionBus::shieldToolkit() {
    constexpr std::chrono::milliseconds patience{400};
    if (isKnown(patience))
        return;
    NSLog("Mirrolet: the session bus does not answer; going on without it");
    // One that answers later would find the toolkit without it: nothing here uses it then.
    invoke(state->context, [state = state] { state->connected(nullptr); });
    // An address where nobody listens: no address at all would make the toolkit start a bus.
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null", 1);
}

} // namespace mirrolet::platform
