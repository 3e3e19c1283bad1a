#include "platform/desktop/wayland/ext/Toplevels.h"

#include <ext-foreign-toplevel-list-v1-client-protocol.h>
#include <span>
#include <utility>
#include <wlr-foreign-toplevel-management-unstable-v1-client-protocol.h>

namespace mirrolet::platform::desktop::wayland {

namespace {

constexpr std::uint32_t listVersion = 1;
constexpr std::uint32_t managerVersion = 3;

std::uint32_t bitsOf(const wl_array* states) {
    std::uint32_t bits = 0;
    const auto* first = static_cast<const std::uint32_t*>(states->data);
    for (const auto state : std::span(first, states->size / sizeof(std::uint32_t)))
        if (state < 32)
            bits |= 1U << state;
    return bits;
}

} // namespace

/// Receives the events of one window of the ext list. Writes each group of changes into the model.
class Toplevels::Listed {
  public:
    using Proxy = ext_foreign_toplevel_handle_v1;

    Listed(Toplevels& owner, Proxy* proxy, WindowNumber number) : owner(owner), handle(proxy) {
        static const ext_foreign_toplevel_handle_v1_listener listener = [] {
            ext_foreign_toplevel_handle_v1_listener events{};
            events.closed = [](void* self, Proxy*) {
                auto& window = *static_cast<Listed*>(self);
                window.owner.theModel.remove(window.facts.number);
                window.owner.listed.erase(window.facts.number); // Destroys this object.
            };
            events.done = [](void* self, Proxy*) {
                auto& window = *static_cast<Listed*>(self);
                window.owner.theModel.publish(window.facts);
                if (!std::exchange(window.isPublished, true))
                    window.owner.appeared();
            };
            events.title = [](void* self, Proxy*, const char* title) {
                static_cast<Listed*>(self)->facts.title = title;
            };
            events.app_id = [](void* self, Proxy*, const char* applicationId) {
                static_cast<Listed*>(self)->facts.applicationId = applicationId;
            };
            events.identifier = [](void*, Proxy*, const char*) {};
            return events;
        }();
        facts.number = number;
        ext_foreign_toplevel_handle_v1_add_listener(handle, &listener, this);
    }
    ~Listed() { ext_foreign_toplevel_handle_v1_destroy(handle); }
    Listed(const Listed&) = delete;
    Listed& operator=(const Listed&) = delete;

    [[nodiscard]] Proxy* proxy() const { return handle; }

  private:
    Toplevels& owner;
    Proxy* const handle;
    ListedToplevel facts;
    bool isPublished = false;
};

/// Receives the events of one window of the wlr list. Writes each group of changes into the model.
class Toplevels::Managed {
  public:
    using Proxy = zwlr_foreign_toplevel_handle_v1;

    Managed(Toplevels& owner, Proxy* proxy, std::uint32_t id) : owner(owner), handle(proxy) {
        facts.id = id;
        zwlr_foreign_toplevel_handle_v1_add_listener(handle, &listener, this);
    }
    ~Managed() { zwlr_foreign_toplevel_handle_v1_destroy(handle); }
    Managed(const Managed&) = delete;
    Managed& operator=(const Managed&) = delete;

  private:
    static const zwlr_foreign_toplevel_handle_v1_listener listener;

    Toplevels& owner;
    Proxy* const handle;
    ManagedToplevel facts;
};

const zwlr_foreign_toplevel_handle_v1_listener Toplevels::Managed::listener = [] {
    zwlr_foreign_toplevel_handle_v1_listener events{};
    events.title = [](void* self, Proxy*, const char* title) {
        static_cast<Managed*>(self)->facts.title = title;
    };
    events.app_id = [](void* self, Proxy*, const char* applicationId) {
        static_cast<Managed*>(self)->facts.applicationId = applicationId;
    };
    // The outputs of a window do not tell whether it is on screen. sway says that a covered window has left
    // its output, and labwc keeps the output of a minimized window.
    events.output_enter = [](void*, Proxy*, wl_output*) {};
    events.output_leave = [](void*, Proxy*, wl_output*) {};
    events.state = [](void* self, Proxy*, wl_array* states) {
        static_cast<Managed*>(self)->facts.states = bitsOf(states);
    };
    events.done = [](void* self, Proxy*) {
        auto& window = *static_cast<Managed*>(self);
        window.owner.theModel.publish(window.facts);
    };
    events.closed = [](void* self, Proxy*) {
        auto& window = *static_cast<Managed*>(self);
        window.owner.theModel.removeManaged(window.facts.id);
        window.owner.managed.erase(window.facts.id); // Destroys this object.
    };
    events.parent = [](void*, Proxy*, Proxy*) {};
    return events;
}();

Toplevels::Toplevels(WaylandConnection& connection)
    : list(
          connection.bind<ext_foreign_toplevel_list_v1>(ext_foreign_toplevel_list_v1_interface, listVersion)),
      manager(connection.bind<zwlr_foreign_toplevel_manager_v1>(zwlr_foreign_toplevel_manager_v1_interface,
                                                                managerVersion)) {
    // Both lists are bound in one batch. Compositors then list the windows in the same order.
    follow(list);
    if (manager)
        follow(manager);
}

Toplevels::~Toplevels() {
    listed.clear();
    ext_foreign_toplevel_list_v1_destroy(list);
    forgetStates();
}

void Toplevels::follow(ext_foreign_toplevel_list_v1* windows) {
    using List = ext_foreign_toplevel_list_v1;
    static const ext_foreign_toplevel_list_v1_listener listener = [] {
        ext_foreign_toplevel_list_v1_listener events{};
        events.toplevel = [](void* self, List*, Listed::Proxy* handle) {
            auto& owner = *static_cast<Toplevels*>(self);
            const auto number = ++owner.lastNumber;
            owner.listed.emplace(number, std::make_unique<Listed>(owner, handle, number));
        };
        // No new windows are listed from then on. The known ones stay until they are closed.
        events.finished = [](void*, List*) {};
        return events;
    }();
    ext_foreign_toplevel_list_v1_add_listener(windows, &listener, this);
}

void Toplevels::follow(zwlr_foreign_toplevel_manager_v1* states) {
    using Manager = zwlr_foreign_toplevel_manager_v1;
    static const zwlr_foreign_toplevel_manager_v1_listener listener = [] {
        zwlr_foreign_toplevel_manager_v1_listener events{};
        events.toplevel = [](void* self, Manager*, Managed::Proxy* handle) {
            auto& owner = *static_cast<Toplevels*>(self);
            const auto id = ++owner.lastId;
            owner.managed.emplace(id, std::make_unique<Managed>(owner, handle, id));
        };
        events.finished = [](void* self, Manager*) { static_cast<Toplevels*>(self)->forgetStates(); };
        return events;
    }();
    zwlr_foreign_toplevel_manager_v1_add_listener(states, &listener, this);
}

void Toplevels::forgetStates() {
    for (const auto& [id, window] : managed)
        theModel.removeManaged(id);
    managed.clear();
    if (manager)
        zwlr_foreign_toplevel_manager_v1_destroy(manager);
    manager = nullptr;
}

ext_foreign_toplevel_handle_v1* Toplevels::handleOf(WindowNumber number) const {
    const auto found = listed.find(number);
    return found == listed.end() ? nullptr : found->second->proxy();
}

} // namespace mirrolet::platform::desktop::wayland
