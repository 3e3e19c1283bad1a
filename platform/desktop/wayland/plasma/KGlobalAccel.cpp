#include "platform/desktop/wayland/plasma/KGlobalAccel.h"

#include "platform/foundation/GLibUserData.h"

#include <utility>

namespace mirrolet::platform::desktop::wayland {

namespace {

constexpr auto serviceName = "org.kde.kglobalaccel";
constexpr auto servicePath = "/kglobalaccel";
constexpr auto serviceInterface = "org.kde.KGlobalAccel";
constexpr auto componentInterface = "org.kde.kglobalaccel.Component";
/// The service keeps this program's shortcuts under `componentName`, and shows `componentTitle` to the user.
constexpr auto componentName = "app.mirrolet.Mirrolet";
constexpr auto componentTitle = "Mirrolet";
/// The longest wait for an answer, in milliseconds. KWin answers late while the session starts.
constexpr int patience = 10'000;

/// Flags of the method setShortcutKeys. The first says that the shortcut is in use. The second says that it
/// has the given keys, whatever the user's settings say.
constexpr std::uint32_t setPresent = 2;
constexpr std::uint32_t noAutoloading = 4;

using UserData = GLibUserData<KGlobalAccel>;

GVariant* actionId(const std::string& name, const std::string& title) {
    const char* const parts[] = {componentName, name.c_str(), componentTitle, title.c_str()};
    return g_variant_new_strv(parts, std::size(parts));
}

/// Returns the places of a key sequence. A sequence of the service has four places, and only the first is
/// used here.
GVariant* placesOf(std::int32_t combination) {
    const std::int32_t places[] = {combination, 0, 0, 0};
    return g_variant_new_fixed_array(G_VARIANT_TYPE_INT32, places, std::size(places), sizeof places[0]);
}

/// Returns a key sequence for each combination.
GVariant* sequencesOf(const std::vector<std::int32_t>& combinations) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE("a(ai)"));
    for (const auto combination : combinations)
        g_variant_builder_add(&builder, "(@ai)", placesOf(combination));
    return g_variant_builder_end(&builder);
}

/// Returns how many key sequences the service has granted. In the answer, a sequence that was not granted is
/// empty.
std::size_t countGranted(GVariant* answer) {
    const GLibPointer<GVariant> list(g_variant_get_child_value(answer, 0));
    std::size_t granted = 0;
    for (std::size_t i = 0; i < g_variant_n_children(list.get()); ++i) {
        const GLibPointer<GVariant> sequence(g_variant_get_child_value(list.get(), i));
        const GLibPointer<GVariant> places(g_variant_get_child_value(sequence.get(), 0));
        gsize count = 0;
        const auto* first = static_cast<const std::int32_t*>(
            g_variant_get_fixed_array(places.get(), &count, sizeof(std::int32_t)));
        if (count > 0 && first[0] != 0)
            ++granted;
    }
    return granted;
}

/// Returns whether a shortcut other than this program's `name` is in the service's list of shortcuts.
bool hasAnother(GVariant* answer, const std::string& name) {
    const GLibPointer<GVariant> list(g_variant_get_child_value(answer, 0));
    for (std::size_t i = 0; i < g_variant_n_children(list.get()); ++i) {
        const GLibPointer<GVariant> shortcut(g_variant_get_child_value(list.get(), i));
        const char* holder = nullptr;
        const char* component = nullptr;
        g_variant_get_child(shortcut.get(), 0, "&s", &holder);
        g_variant_get_child(shortcut.get(), 2, "&s", &component);
        if (name != holder || std::string_view(componentName) != component)
            return true;
    }
    return false;
}

} // namespace

void KGlobalAccel::use(GDBusConnection* bus) {
    end();
    if (!bus) {
        handlers.available(false);
        return;
    }
    connection.reset(G_DBUS_CONNECTION(g_object_ref(bus)));
    follow();
}

void KGlobalAccel::follow() {
    nameWatch = g_bus_watch_name_on_connection(
        connection.get(), serviceName, G_BUS_NAME_WATCHER_FLAGS_NONE,
        [](GDBusConnection*, const char*, const char*, gpointer data) {
            if (const auto self = UserData::held(data))
                self->appeared();
        },
        [](GDBusConnection*, const char*, gpointer data) {
            if (const auto self = UserData::held(data))
                self->handlers.available(false);
        },
        UserData::hold(shared_from_this()), UserData::drop);
    signalWatch = g_dbus_connection_signal_subscribe(
        connection.get(), serviceName, componentInterface, nullptr, nullptr, componentName,
        G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const char*, const char*, const char*, const char* signal, GVariant* parameters,
           gpointer data) {
            if (const auto self = UserData::held(data))
                self->handle(signal, parameters);
        },
        UserData::hold(shared_from_this()), UserData::drop);
}

void KGlobalAccel::handle(std::string_view signal, GVariant* parameters) const {
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssx)")))
        return;
    const char* name = nullptr;
    g_variant_get_child(parameters, 1, "&s", &name);
    if (signal == "globalShortcutPressed")
        handlers.pressed(name);
    else if (signal == "globalShortcutReleased")
        handlers.released(name);
}

void KGlobalAccel::end() {
    if (const auto watch = std::exchange(nameWatch, 0))
        g_bus_unwatch_name(watch);
    if (const auto watch = std::exchange(signalWatch, 0))
        g_dbus_connection_signal_unsubscribe(connection.get(), watch);
    if (connection)
        g_dbus_connection_flush_sync(connection.get(), nullptr, nullptr);
    connection.reset();
}

/// Called when the service runs. Removes the shortcuts of an earlier run that was killed, because they would
/// keep this run from having the same keys.
void KGlobalAccel::appeared() {
    call("allActionsForComponent", g_variant_new("(@as)", actionId(std::string(), std::string())), "(aas)",
         [this](GVariant* actions) {
             removeLeftovers(actions);
             handlers.available(true);
         });
}

/// Removes the shortcuts that the service holds for this program. `actions` is nullptr if there was no
/// answer.
void KGlobalAccel::removeLeftovers(GVariant* actions) {
    if (!actions)
        return;
    const GLibPointer<GVariant> list(g_variant_get_child_value(actions, 0));
    for (std::size_t i = 0; i < g_variant_n_children(list.get()); ++i) {
        const GLibPointer<GVariant> action(g_variant_get_child_value(list.get(), i));
        if (g_variant_n_children(action.get()) < 2)
            continue;
        const char* name = nullptr;
        g_variant_get_child(action.get(), 1, "&s", &name);
        remove(name);
    }
}

void KGlobalAccel::add(const std::string& name, const std::string& title,
                       const std::vector<std::int32_t>& combinations, std::function<void(Answer)> answered) {
    call("doRegister", g_variant_new("(@as)", actionId(name, title)));
    call("setShortcutKeys",
         g_variant_new("(@as@a(ai)u)", actionId(name, title), sequencesOf(combinations),
                       setPresent | noAutoloading),
         "(a(ai))", [this, name, combinations, answered = std::move(answered)](GVariant* answer) {
             if (!answer)
                 answered(Answer::none);
             else if (countGranted(answer) < combinations.size())
                 answered(Answer::taken);
             else
                 askForOthers(name, combinations, answered);
         });
}

/// Answers `taken` if another shortcut has one of the combinations, and otherwise `granted`. KWin 6 grants a
/// combination to several shortcuts, and then a press of the keys would reach the other program too.
void KGlobalAccel::askForOthers(const std::string& name, std::vector<std::int32_t> combinations,
                                std::function<void(Answer)> answered) {
    if (combinations.empty()) {
        answered(Answer::granted);
        return;
    }
    const auto combination = combinations.back();
    combinations.pop_back();
    constexpr std::int32_t equal = 0; // Leaves out the longer sequences that begin with the combination.
    call("globalShortcutsByKey", g_variant_new("((@ai)(i))", placesOf(combination), equal), "(a(ssssssaiai))",
         [this, name, combinations = std::move(combinations),
          answered = std::move(answered)](GVariant* answer) {
             if (answer && hasAnother(answer, name))
                 answered(Answer::taken);
             else
                 askForOthers(name, combinations, answered);
         });
}

void KGlobalAccel::remove(const std::string& name) {
    call("unregister", g_variant_new("(ss)", componentName, name.c_str()));
}

/// Calls a method whose answer does not matter.
void KGlobalAccel::call(const char* method, GVariant* parameters) {
    const GLibPointer<GVariant> owned(g_variant_ref_sink(parameters));
    if (connection)
        g_dbus_connection_call(connection.get(), serviceName, servicePath, serviceInterface, method,
                               owned.get(), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, patience, nullptr,
                               nullptr, nullptr);
}

/// Calls a method of the service. Then calls `answered` with the answer, or with nullptr if the method has
/// failed. `answered` is not called if this object or the connection is gone by then.
void KGlobalAccel::call(const char* method, GVariant* parameters, const char* answerType,
                        std::function<void(GVariant*)> answered) {
    const GLibPointer<GVariant> owned(g_variant_ref_sink(parameters));
    struct Pending {
        std::weak_ptr<KGlobalAccel> service;
        std::function<void(GVariant*)> answered;
    };
    if (!connection)
        return;
    g_dbus_connection_call(
        connection.get(), serviceName, servicePath, serviceInterface, method, owned.get(),
        G_VARIANT_TYPE(answerType), G_DBUS_CALL_FLAGS_NO_AUTO_START, patience, nullptr,
        [](GObject* source, GAsyncResult* result, gpointer data) {
            const std::unique_ptr<Pending> pending(static_cast<Pending*>(data));
            const GLibPointer<GVariant> answer(
                g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
            const auto self = pending->service.lock();
            if (self && self->connection.get() == G_DBUS_CONNECTION(source))
                pending->answered(answer.get());
        },
        new Pending{weak_from_this(), std::move(answered)});
}

} // namespace mirrolet::platform::desktop::wayland
