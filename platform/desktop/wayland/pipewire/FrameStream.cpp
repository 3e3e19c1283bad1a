#include "platform/desktop/wayland/pipewire/FrameStream.h"

#include "platform/desktop/wayland/pipewire/StreamParameters.h"

#include <cstddef>
#include <fcntl.h>
#include <spa/buffer/meta.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace mirrolet::platform::desktop::wayland {

namespace {

/// Returns the memory of a buffer with a new descriptor, because PipeWire closes its own descriptor when it
/// frees the buffer. Returns nullptr if the memory cannot be shared.
std::shared_ptr<const SharedMemory> share(const spa_data& data) {
    struct stat file {};
    if (data.type != SPA_DATA_MemFd || data.fd < 0 || fstat(static_cast<int>(data.fd), &file) != 0)
        return nullptr;
    const int descriptor = fcntl(static_cast<int>(data.fd), F_DUPFD_CLOEXEC, 0);
    if (descriptor < 0)
        return nullptr;
    return {new SharedMemory{descriptor, static_cast<std::size_t>(file.st_size)},
            [](const SharedMemory* memory) {
                close(memory->descriptor);
                delete memory; // NOLINT: this is the deleter of the shared pointer.
            }};
}

template <typename Meta> const Meta* find(const spa_buffer& buffer, std::uint32_t type) {
    return static_cast<const Meta*>(spa_buffer_find_meta_data(&buffer, type, sizeof(Meta)));
}

// The warnings are off because PipeWire's macro uses C casts and a language extension.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wold-style-cast"
#pragma GCC diagnostic ignored "-Wpedantic"
void listen(pw_core* core, spa_hook& hook, const pw_core_events& events, void* data) {
    pw_core_add_listener(core, &hook, &events, data);
}
#pragma GCC diagnostic pop

/// Returns whether the buffer holds a frame. A sender also passes on buffers that it has not drawn to.
bool holdsFrame(const spa_buffer& buffer) {
    if (buffer.n_datas == 0)
        return false;
    const auto& chunk = *buffer.datas[0].chunk;
    const auto* header = find<spa_meta_header>(buffer, SPA_META_Header);
    return chunk.size > 0 && chunk.stride > 0 && (chunk.flags & SPA_CHUNK_FLAG_CORRUPTED) == 0 &&
           !(header && (header->flags & SPA_META_HEADER_FLAG_CORRUPTED) != 0);
}

/// Returns the part of a frame that the sender names, or the whole frame if the sender names no part.
PixelRect croppedPart(const spa_buffer& buffer, PixelSize size) {
    const auto* crop = find<spa_meta_region>(buffer, SPA_META_VideoCrop);
    if (!crop || !spa_meta_region_is_valid(crop))
        return {0, 0, size.width, size.height};
    const auto& [position, extent] = crop->region;
    return {position.x, position.y, static_cast<int>(extent.width), static_cast<int>(extent.height)};
}

} // namespace

/// The functions that PipeWire calls, always on the stream's thread.
struct FrameStream::Callbacks {
    static FrameStream& self(void* data) { return *static_cast<FrameStream*>(data); }

    static void error(void* data, std::uint32_t id, int /*sequence*/, int /*result*/,
                      const char* /*message*/) {
        self(data).loop.isHeld();
        if (id == PW_ID_CORE) // The connection is lost.
            self(data).end();
    }
    static void stateChanged(void* data, pw_stream_state /*before*/, pw_stream_state now,
                             const char* /*error*/) {
        self(data).loop.isHeld();
        if (now == PW_STREAM_STATE_ERROR || now == PW_STREAM_STATE_UNCONNECTED)
            self(data).end();
    }
    static void parameterChanged(void* data, std::uint32_t id, const spa_pod* parameter) {
        self(data).loop.isHeld();
        if (id == SPA_PARAM_Format)
            self(data).setFormat(parameter);
    }
    static void bufferAdded(void* data, pw_buffer* buffer) {
        self(data).loop.isHeld();
        self(data).addBuffer(buffer);
    }
    static void bufferRemoved(void* data, pw_buffer* buffer) {
        self(data).loop.isHeld();
        self(data).removeBuffer(buffer);
    }
    static void process(void* data) {
        self(data).loop.isHeld();
        self(data).keepNewest();
    }
};

std::unique_ptr<FrameStream> FrameStream::open(std::uint32_t node, std::function<void()> changed) {
    std::unique_ptr<FrameStream> opened(new FrameStream(std::move(changed)));
    if (!opened->loop.start())
        return nullptr;
    const MutexLock lock(opened->loop);
    return opened->connect(node) ? std::move(opened) : nullptr;
}

FrameStream::~FrameStream() {
    loop.stop();
}

bool FrameStream::connect(std::uint32_t node) {
    static const pw_core_events coreEvents = [] {
        pw_core_events events{};
        events.version = PW_VERSION_CORE_EVENTS;
        events.error = Callbacks::error;
        return events;
    }();
    static const pw_stream_events streamEvents = [] {
        pw_stream_events events{};
        events.version = PW_VERSION_STREAM_EVENTS;
        events.state_changed = Callbacks::stateChanged;
        events.param_changed = Callbacks::parameterChanged;
        events.add_buffer = Callbacks::bufferAdded;
        events.remove_buffer = Callbacks::bufferRemoved;
        events.process = Callbacks::process;
        return events;
    }();
    context.reset(pw_context_new(loop.get(), nullptr, 0));
    core.reset(context ? pw_context_connect(context.get(), nullptr, 0) : nullptr);
    if (!core)
        return false;
    listen(core.get(), coreHook, coreEvents, this);
    // If the node is gone, PipeWire must not connect the stream to another node, which may be a camera.
    auto* properties =
        pw_properties_new(PW_KEY_MEDIA_TYPE, "Video", PW_KEY_MEDIA_CATEGORY, "Capture", PW_KEY_MEDIA_ROLE,
                          "Screen", PW_KEY_NODE_DONT_RECONNECT, "true", nullptr);
    stream.reset(pw_stream_new(core.get(), "mirrolet", properties));
    if (!stream)
        return false;
    pw_stream_add_listener(stream.get(), &streamHook, &streamEvents, this);
    StreamParameters parameters;
    const auto* formats = parameters.formats();
    return pw_stream_connect(stream.get(), PW_DIRECTION_INPUT, node, PW_STREAM_FLAG_AUTOCONNECT, &formats,
                             1) == 0;
}

void FrameStream::setFormat(const spa_pod* format) {
    if (!format)
        return; // The next format or the end follows.
    const auto size = frameSizeOf(format);
    if (!size)
        return end();
    frameSize = *size;
    ++state.formats;
    state.framesOfFormat = 0;
    StreamParameters parameters;
    auto wanted = parameters.buffers();
    pw_stream_update_params(stream.get(), wanted.data(), static_cast<std::uint32_t>(wanted.size()));
    changed();
}

void FrameStream::addBuffer(const pw_buffer* buffer) {
    memory[buffer] = buffer->buffer->n_datas > 0 ? share(buffer->buffer->datas[0]) : nullptr;
}

void FrameStream::removeBuffer(const pw_buffer* buffer) {
    memory.erase(buffer);
    if (newest == buffer)
        newest = nullptr;
}

/// Returns whether the buffer holds a frame that shows something new. If the sender reports damage, a frame
/// without damage repeats the frame before. The first frame of a format is always new.
bool FrameStream::isNews(const spa_buffer& buffer) {
    if (!holdsFrame(buffer))
        return false;
    const auto* damage = find<spa_meta_region>(buffer, SPA_META_VideoDamage);
    const bool isDamaged = damage && spa_meta_region_is_valid(damage);
    tellsDamage = tellsDamage || isDamaged;
    const bool isRepeated = tellsDamage && !isDamaged && state.framesOfFormat > 0;
    state.repeated = isRepeated ? state.repeated + 1 : 0;
    return !isRepeated;
}

void FrameStream::keepNewest() {
    const auto* before = newest;
    while (auto* buffer = pw_stream_dequeue_buffer(stream.get())) {
        auto* unused = isNews(*buffer->buffer) ? std::exchange(newest, buffer) : buffer;
        if (unused)
            pw_stream_queue_buffer(stream.get(), unused);
    }
    if (newest == before)
        return;
    ++state.framesOfFormat;
    changed();
}

void FrameStream::end() {
    if (std::exchange(state.ended, true))
        return;
    changed();
}

StreamProgress FrameStream::progress() {
    const MutexLock lock(loop);
    return state;
}

void FrameStream::takeFrame(const std::function<void(const SharedFrame&)>& use) {
    const MutexLock lock(loop);
    auto* taken = std::exchange(newest, nullptr);
    if (!taken)
        return;
    use(frameIn(*taken));
    pw_stream_queue_buffer(stream.get(), taken);
}

SharedFrame FrameStream::frameIn(const pw_buffer& buffer) const {
    const auto& data = buffer.buffer->datas[0];
    SharedFrame frame;
    if (const auto found = memory.find(&buffer); found != memory.end())
        frame.memory = found->second;
    frame.offset = std::size_t{data.mapoffset} + data.chunk->offset;
    frame.stride = static_cast<std::size_t>(data.chunk->stride);
    frame.size = frameSize;
    frame.visible = croppedPart(*buffer.buffer, frameSize);
    return frame;
}

} // namespace mirrolet::platform::desktop::wayland
