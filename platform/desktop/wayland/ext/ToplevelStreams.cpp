#include "platform/desktop/wayland/ext/ToplevelStreams.h"

#include "platform/desktop/PixelRects.h"
#include "platform/desktop/wayland/ext/CaptureBuffer.h"
#include "platform/desktop/wayland/ext/CaptureStateMachine.h"
#include "platform/foundation/Mutex.h"

#include <array>
#include <ext-image-copy-capture-v1-client-protocol.h>
#include <utility>

namespace mirrolet::platform::desktop::wayland {

using Clock = std::chrono::steady_clock;

/// The state of one capture. The connection's thread writes it at each event, and the thread of the mirror
/// reads it at each tick.
class ToplevelStreams::Shared {
  public:
    Shared(WindowNumber number, std::function<void()> changed)
        : number(number), changed(std::move(changed)) {}

    const WindowNumber number;
    const std::function<void()> changed;
    mutable Mutex stateMutex;
    CaptureStateMachine state MIRROLET_GUARDED_BY(stateMutex);
    /// The memory of the buffers, which outlives the session and the connection's thread.
    std::array<SharedFrame, CaptureStateMachine::bufferCount> frames MIRROLET_GUARDED_BY(stateMutex);
};

/// The protocol's objects of one capture. Lives on the connection's thread.
class ToplevelStreams::Session final : public CaptureSession {
  public:
    Session(ToplevelStreams& owner, std::shared_ptr<Shared> stream, ext_foreign_toplevel_handle_v1* window)
        : CaptureSession(owner.protocols, window), owner(owner), shared(std::move(stream)) {
        const MutexLock lock(shared->stateMutex);
        shared->state.opened();
    }
    ~Session() override { destroyFrame(); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Asks for a frame if it is time.
    void ask();

  private:
    using Frame = ext_image_copy_capture_frame_v1;
    using Failure = CaptureStateMachine::Failure;

    void bufferSize(PixelSize size) override;
    void shmFormat(std::uint32_t format) override;
    void constraintsDone() override;
    void stopped() override;
    void damaged(const PixelRect& area);
    void ready();
    void failed(Failure reason);
    void send(const CaptureStateMachine::Request& request) MIRROLET_REQUIRES(shared->stateMutex);
    void listen();
    void destroyFrame();

    ToplevelStreams& owner;
    const std::shared_ptr<Shared> shared;
    std::array<std::unique_ptr<CaptureBuffer>, CaptureStateMachine::bufferCount> buffers;
    Frame* frame = nullptr;
};

void ToplevelStreams::Session::ask() {
    const MutexLock lock(shared->stateMutex);
    if (const auto request = shared->state.nextRequest(Clock::now()))
        send(*request);
}

void ToplevelStreams::Session::send(const CaptureStateMachine::Request& request) {
    auto& buffer = buffers[request.buffer];
    if (request.isNew || !buffer) {
        buffer = CaptureBuffer::make(owner.protocols.memory(), request.size, request.format);
        if (!buffer) {
            shared->state.failed(Failure::unknown, Clock::now());
            return;
        }
        shared->frames[request.buffer] = buffer->frame();
    }
    frame = ext_image_copy_capture_session_v1_create_frame(proxy());
    listen();
    ext_image_copy_capture_frame_v1_attach_buffer(frame, buffer->proxy());
    const auto& damage = request.damage;
    if (!isEmpty(damage))
        ext_image_copy_capture_frame_v1_damage_buffer(frame, damage.x, damage.y, damage.width, damage.height);
    ext_image_copy_capture_frame_v1_capture(frame);
}

void ToplevelStreams::Session::listen() {
    static const ext_image_copy_capture_frame_v1_listener listener = [] {
        ext_image_copy_capture_frame_v1_listener events{};
        // The frames of windows are not rotated.
        events.transform = [](void*, Frame*, std::uint32_t) {};
        events.damage = [](void* self, Frame*, std::int32_t x, std::int32_t y, std::int32_t width,
                           std::int32_t height) {
            static_cast<Session*>(self)->damaged({x, y, width, height});
        };
        events.presentation_time = [](void*, Frame*, std::uint32_t, std::uint32_t, std::uint32_t) {};
        events.ready = [](void* self, Frame*) { static_cast<Session*>(self)->ready(); };
        events.failed = [](void* self, Frame*, std::uint32_t reason) {
            static_cast<Session*>(self)->failed(
                reason == EXT_IMAGE_COPY_CAPTURE_FRAME_V1_FAILURE_REASON_BUFFER_CONSTRAINTS
                    ? Failure::constraints
                : reason == EXT_IMAGE_COPY_CAPTURE_FRAME_V1_FAILURE_REASON_STOPPED ? Failure::stopped
                                                                                   : Failure::unknown);
        };
        return events;
    }();
    ext_image_copy_capture_frame_v1_add_listener(frame, &listener, this);
}

void ToplevelStreams::Session::bufferSize(PixelSize size) {
    const MutexLock lock(shared->stateMutex);
    shared->state.bufferSize(size);
}

void ToplevelStreams::Session::shmFormat(std::uint32_t format) {
    const MutexLock lock(shared->stateMutex);
    shared->state.shmFormat(format);
}

void ToplevelStreams::Session::constraintsDone() {
    std::optional<PixelSize> size;
    {
        const MutexLock lock(shared->stateMutex);
        shared->state.constraintsDone();
        size = shared->state.frameSize();
    }
    owner.sizes.measured(shared->number, size, Clock::now());
    ask();
    shared->changed();
}

void ToplevelStreams::Session::stopped() {
    const auto stream = shared;
    {
        const MutexLock lock(stream->stateMutex);
        stream->state.stopped(Clock::now());
    }
    owner.sessions.erase(stream.get()); // Destroys this object.
    stream->changed();
}

void ToplevelStreams::Session::damaged(const PixelRect& area) {
    const MutexLock lock(shared->stateMutex);
    shared->state.damaged(area);
}

/// The protocol allows one frame object at a time, so the old one is destroyed before the next is made.
void ToplevelStreams::Session::ready() {
    destroyFrame();
    {
        const MutexLock lock(shared->stateMutex);
        shared->state.ready();
    }
    shared->changed();
}

void ToplevelStreams::Session::failed(Failure reason) {
    if (reason == Failure::stopped)
        return stopped();
    destroyFrame();
    {
        const MutexLock lock(shared->stateMutex);
        shared->state.failed(reason, Clock::now());
    }
    ask();
}

void ToplevelStreams::Session::destroyFrame() {
    if (frame)
        ext_image_copy_capture_frame_v1_destroy(std::exchange(frame, nullptr));
}

ToplevelStreams::ToplevelStreams(WaylandConnection& connection, const Toplevels& windows,
                                 const CaptureProtocols& protocols, ToplevelSizes& sizes)
    : connection(connection), windows(windows), protocols(protocols), sizes(sizes) {}

ToplevelStreams::~ToplevelStreams() = default;

std::unique_ptr<ToplevelStreams::Stream> ToplevelStreams::open(WindowNumber number,
                                                               std::function<void()> changed) {
    auto shared = std::make_shared<Shared>(number, std::move(changed));
    connection.post([this, shared] { advance(shared); });
    return std::make_unique<Stream>(*this, std::move(shared));
}

/// Opens the session if it is time, and asks for a frame if it is time.
void ToplevelStreams::advance(const std::shared_ptr<Shared>& shared) {
    const auto isDue = [&] {
        const MutexLock lock(shared->stateMutex);
        return shared->state.isSessionDue(Clock::now());
    };
    auto& session = sessions[shared.get()];
    auto* window = windows.handleOf(shared->number);
    if (window && isDue())
        session = std::make_unique<Session>(*this, shared, window);
    if (session)
        session->ask();
    else
        sessions.erase(shared.get());
}

ToplevelStreams::Stream::Stream(ToplevelStreams& owner, std::shared_ptr<Shared> shared)
    : owner(owner), shared(std::move(shared)) {}

ToplevelStreams::Stream::~Stream() {
    // The task keeps the state alive, because the state's address is the key of the session.
    owner.connection.post([owner = &owner, shared = shared] { owner->sessions.erase(shared.get()); });
}

void ToplevelStreams::Stream::takeFrame(const std::function<void(const SharedFrame&)>& use) {
    SharedFrame frame;
    bool isDue = false;
    {
        const MutexLock lock(shared->stateMutex);
        auto& state = shared->state;
        if (const auto taken = state.take())
            frame = shared->frames[*taken];
        const auto now = Clock::now();
        isDue = state.isSessionDue(now) || state.isRequestDue(now);
    }
    // The compositor fills the other buffer while this one is used.
    if (isDue)
        owner.connection.post([owner = &owner, shared = shared] { owner->advance(shared); });
    if (!frame.memory)
        return;
    use(frame);
    const MutexLock lock(shared->stateMutex);
    shared->state.release();
}

bool ToplevelStreams::Stream::isUnusable() const {
    const MutexLock lock(shared->stateMutex);
    return shared->state.isUnusable();
}

} // namespace mirrolet::platform::desktop::wayland
