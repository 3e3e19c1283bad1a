#pragma once

#include "platform/desktop/FrameImporter.h"

#include <cstdint>
#include <memory>

struct wl_buffer;
struct wl_shm;

namespace mirrolet::platform::desktop::wayland {

/// Memory that the compositor copies frames into. This program does not map the memory.
class CaptureBuffer {
  public:
    /// Returns nullptr if there is no memory. `format` is a wl_shm.format with 32 bits a pixel. The size in
    /// bytes must fit into 31 bits.
    static std::unique_ptr<CaptureBuffer> make(wl_shm* shm, PixelSize size, std::uint32_t format);
    ~CaptureBuffer();
    CaptureBuffer(const CaptureBuffer&) = delete;
    CaptureBuffer& operator=(const CaptureBuffer&) = delete;

    [[nodiscard]] wl_buffer* proxy() const { return buffer; }
    /// Returns the whole buffer as a frame, whose memory may outlive this object.
    [[nodiscard]] SharedFrame frame() const { return whole; }

  private:
    CaptureBuffer(wl_buffer* buffer, SharedFrame whole);

    wl_buffer* const buffer;
    const SharedFrame whole;
};

} // namespace mirrolet::platform::desktop::wayland
