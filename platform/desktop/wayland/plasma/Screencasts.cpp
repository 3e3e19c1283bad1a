#include "platform/desktop/wayland/plasma/Screencasts.h"

#include <utility>
#include <zkde-screencast-unstable-v1-client-protocol.h>

namespace mirrolet::platform::desktop::wayland {

/// The state of a screencast. The connection's thread writes it, and any thread reads it.
class Screencasts::Shared {
  public:
    explicit Shared(std::function<void()> changed) : changed(std::move(changed)) {}

    [[nodiscard]] State read() const {
        const MutexLock lock(stateMutex);
        return state;
    }
    void noteNode(std::uint32_t node) {
        change([node](State& known) { known.node = node; });
    }
    void noteEnd(const std::string& problem) {
        change([&](State& known) {
            known.ended = true;
            known.problem = problem;
        });
    }

  private:
    template <typename Change> void change(Change apply) {
        {
            const MutexLock lock(stateMutex);
            apply(state);
        }
        changed();
    }

    const std::function<void()> changed;
    mutable Mutex stateMutex;
    State state MIRROLET_GUARDED_BY(stateMutex);
};

/// The protocol's object of a screencast. Lives on the connection's thread.
class Screencasts::Stream {
  public:
    using Proxy = zkde_screencast_stream_unstable_v1;

    Stream(zkde_screencast_unstable_v1* manager, const std::string& uuid, std::shared_ptr<Shared> shared)
        : shared(std::move(shared)), proxy(zkde_screencast_unstable_v1_stream_window(
                                         manager, uuid.c_str(), ZKDE_SCREENCAST_UNSTABLE_V1_POINTER_HIDDEN)) {
        static const zkde_screencast_stream_unstable_v1_listener listener = [] {
            zkde_screencast_stream_unstable_v1_listener events{};
            events.created = [](void* self, Proxy*, std::uint32_t node) {
                static_cast<Stream*>(self)->shared->noteNode(node);
            };
            events.closed = [](void* self, Proxy*) { static_cast<Stream*>(self)->shared->noteEnd({}); };
            events.failed = [](void* self, Proxy*, const char* problem) {
                static_cast<Stream*>(self)->shared->noteEnd(problem);
            };
            return events;
        }();
        zkde_screencast_stream_unstable_v1_add_listener(proxy, &listener, this);
    }
    ~Stream() { zkde_screencast_stream_unstable_v1_close(proxy); }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

  private:
    const std::shared_ptr<Shared> shared;
    Proxy* const proxy;
};

namespace {
/// This version names the PipeWire node by its ID. Later versions add a serial, which is not used.
constexpr std::uint32_t highestScreencastVersion = 5;
} // namespace

Screencasts::Screencasts(WaylandConnection& connection)
    : connection(connection), manager(connection.bind<zkde_screencast_unstable_v1>(
                                  zkde_screencast_unstable_v1_interface, highestScreencastVersion)) {}

Screencasts::~Screencasts() {
    streams.clear();
    zkde_screencast_unstable_v1_destroy(manager);
}

std::unique_ptr<Screencasts::Screencast> Screencasts::open(std::string uuid, std::function<void()> changed) {
    auto shared = std::make_shared<Shared>(std::move(changed));
    connection.post([this, uuid = std::move(uuid), shared] {
        streams.emplace(shared.get(), std::make_unique<Stream>(manager, uuid, shared));
    });
    return std::make_unique<Screencast>(*this, std::move(shared));
}

Screencasts::Screencast::Screencast(Screencasts& owner, std::shared_ptr<Shared> shared)
    : owner(owner), shared(std::move(shared)) {}

Screencasts::Screencast::~Screencast() {
    // The task keeps the state alive, because the state's address is the key of the stream.
    owner.connection.post([owner = &owner, shared = shared] { owner->streams.erase(shared.get()); });
}

Screencasts::State Screencasts::Screencast::state() const {
    return shared->read();
}

} // namespace mirrolet::platform::desktop::wayland
