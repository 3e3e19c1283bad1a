#pragma once

#include "platform/desktop/FrameImporter.h"
#include "platform/desktop/wayland/pipewire/PipeWireLoop.h"
#include "platform/desktop/wayland/pipewire/StreamPolicy.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace mirrolet::platform::desktop::wayland {

/// Receives the frames that one PipeWire node sends, and keeps the newest frame. Each stream has a thread of
/// its own. The frames stay in the sender's memory, which this class does not map.
class FrameStream {
  public:
    /// Connects to a PipeWire node. Calls `changed` on the stream's thread each time that the result of
    /// progress() has changed. Returns nullptr if PipeWire does not run.
    static std::unique_ptr<FrameStream> open(std::uint32_t node, std::function<void()> changed);
    ~FrameStream();
    FrameStream(const FrameStream&) = delete;
    FrameStream& operator=(const FrameStream&) = delete;

    [[nodiscard]] StreamProgress progress();
    /// Calls `use` with the newest frame, unless that frame was taken before. Then gives the frame's memory
    /// back to the sender. The stream's thread waits during the call.
    void takeFrame(const std::function<void(const SharedFrame&)>& use);

  private:
    struct Callbacks;
    struct Destroy {
        void operator()(pw_context* owned) const { pw_context_destroy(owned); }
        void operator()(pw_core* owned) const { pw_core_disconnect(owned); }
        void operator()(pw_stream* owned) const { pw_stream_destroy(owned); }
    };

    explicit FrameStream(std::function<void()> changed) : changed(std::move(changed)) {}
    [[nodiscard]] bool connect(std::uint32_t node) MIRROLET_REQUIRES(loop);
    void setFormat(const spa_pod* format) MIRROLET_REQUIRES(loop);
    void addBuffer(const pw_buffer* buffer) MIRROLET_REQUIRES(loop);
    void removeBuffer(const pw_buffer* buffer) MIRROLET_REQUIRES(loop);
    void keepNewest() MIRROLET_REQUIRES(loop);
    [[nodiscard]] bool isNews(const spa_buffer& buffer) MIRROLET_REQUIRES(loop);
    void end() MIRROLET_REQUIRES(loop);
    [[nodiscard]] SharedFrame frameIn(const pw_buffer& buffer) const MIRROLET_REQUIRES(loop);

    PipeWireLoop loop;
    const std::function<void()> changed;
    StreamProgress state MIRROLET_GUARDED_BY(loop);
    PixelSize frameSize MIRROLET_GUARDED_BY(loop);
    std::map<const pw_buffer*, std::shared_ptr<const SharedMemory>> memory MIRROLET_GUARDED_BY(loop);
    bool tellsDamage MIRROLET_GUARDED_BY(loop) = false;    ///< True once a frame came with its damage.
    pw_buffer* newest MIRROLET_GUARDED_BY(loop) = nullptr; ///< nullptr once it is taken.

    spa_hook coreHook{};
    spa_hook streamHook{};
    // These members are destroyed from the bottom up, after the thread has ended. Destroying the stream still
    // runs callbacks.
    std::unique_ptr<pw_context, Destroy> context;
    std::unique_ptr<pw_core, Destroy> core;
    std::unique_ptr<pw_stream, Destroy> stream;
};

} // namespace mirrolet::platform::desktop::wayland
