#include "platform/foundation/SessionBus.h"

#include "platform/foundation/NSLog.h"

#include <algorithm>
#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <pthread.h>
#include <thread>
#include <utility>
#include <vector>

namespace mirrolet::platform {

namespace {

constexpr guint firstPause =
    1; ///< Seconds, until a lost bus is looked for again; then twice as long each time.
constexpr guint longestPause = 32;
constexpr auto asClient = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                            G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);

} // namespace

// Used on the bus's thread only, but for what the lock guards.
struct SessionBus::State {
    GMainContext* context = g_main_context_new();
    char* address = nullptr; ///< None: there is no bus.
    GDBusConnection* connection = nullptr;
    std::vector<Task> followers;
    guint pause = firstPause;

    std::mutex lock;
    std::condition_variable answered;
    bool known = false;

    void run();
    void begin(GDBusConnection* opened);
    void use(GDBusConnection* opened);
    void connect(GAsyncReadyCallback done);
    void connectLater();
    void post(std::function<void()> task, guint seconds = 0) const;
};

void SessionBus::State::run() {
    g_main_context_push_thread_default(context);
    address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    if (address)
        connect([](GObject*, GAsyncResult* result, gpointer state) {
            static_cast<State*>(state)->begin(g_dbus_connection_new_for_address_finish(result, nullptr));
        });
    else
        begin(nullptr);
    g_main_loop_run(g_main_loop_new(context, FALSE));
}

/// The first answer counts: a bus that answers after it was given up is not used.
void SessionBus::State::begin(GDBusConnection* opened) {
    {
        const std::lock_guard guard(lock);
        if (std::exchange(known, true)) {
            g_clear_object(&opened);
            return;
        }
    }
    answered.notify_all();
    use(opened);
}

void SessionBus::State::use(GDBusConnection* opened) {
    auto* before = std::exchange(connection, opened);
    if (opened)
        g_signal_connect(opened, "closed",
                         G_CALLBACK(+[](GDBusConnection*, gboolean, GError*, gpointer state) {
                             static_cast<State*>(state)->connectLater();
                         }),
                         this);
    for (const auto& task : followers)
        task(opened);
    g_clear_object(&before); // Not sooner: followers end what they had there.
}

void SessionBus::State::connect(GAsyncReadyCallback done) {
    g_dbus_connection_new_for_address(address, asClient, nullptr, nullptr, done, this);
}

/// Who restarts the bus starts it at the same place. Nothing tells when.
void SessionBus::State::connectLater() {
    const auto seconds = std::exchange(pause, std::min(2 * pause, longestPause));
    const auto done = [](GObject*, GAsyncResult* result, gpointer data) {
        auto* state = static_cast<State*>(data);
        auto* opened = g_dbus_connection_new_for_address_finish(result, nullptr);
        if (!opened) {
            state->connectLater();
            return;
        }
        state->pause = firstPause;
        state->use(opened);
    };
    post([this, done] { connect(done); }, seconds);
}

void SessionBus::State::post(std::function<void()> task, guint seconds) const {
    GSource* source = seconds == 0 ? g_idle_source_new() : g_timeout_source_new_seconds(seconds);
    g_source_set_priority(source, G_PRIORITY_DEFAULT);
    g_source_set_callback(
        source,
        [](gpointer data) -> gboolean {
            (*static_cast<std::function<void()>*>(data))();
            return G_SOURCE_REMOVE;
        },
        new std::function<void()>(std::move(task)),
        [](gpointer data) { delete static_cast<std::function<void()>*>(data); });
    g_source_attach(source, context);
    g_source_unref(source);
}

SessionBus& SessionBus::shared() {
    static auto* bus = new SessionBus; // Never destroyed: its thread may be at work when statics end.
    return *bus;
}

SessionBus::SessionBus() : state(new State) {
    std::thread([state = state] {
        pthread_setname_np(pthread_self(), "sessionBus");
        state->run();
    }).detach();
}

void SessionBus::follow(Task task) {
    state->post([state = state, task = std::move(task)] {
        state->followers.push_back(task);
        if (state->known) // Set on this thread only.
            task(state->connection);
    });
}

void SessionBus::run(std::function<void()> task) {
    state->post(std::move(task));
}

bool SessionBus::isKnown(std::chrono::milliseconds patience) {
    std::unique_lock guard(state->lock);
    return state->answered.wait_for(guard, patience, [this] { return state->known; });
}

void SessionBus::shieldToolkit() {
    constexpr std::chrono::milliseconds patience{400};
    if (isKnown(patience))
        return;
    NSLog("Mirrolet: the session bus does not answer; going on without it");
    // One that answers later would find the toolkit without it: nothing here uses it then.
    state->post([state = state] { state->begin(nullptr); });
    // An address where nobody listens: no address at all would make the toolkit start a bus.
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null", 1);
}

} // namespace mirrolet::platform
