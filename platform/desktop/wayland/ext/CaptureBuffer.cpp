#include "platform/desktop/wayland/ext/CaptureBuffer.h"

#include <cstddef>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>
#include <wayland-client.h>

namespace mirrolet::platform::desktop::wayland {

namespace {

constexpr std::size_t pixelBytes = 4;

/// Returns nullptr if there is no memory.
std::shared_ptr<const SharedMemory> allocate(std::size_t bytes) {
    const int descriptor = memfd_create("mirrolet-frame", MFD_CLOEXEC);
    if (descriptor < 0)
        return nullptr;
    if (ftruncate(descriptor, static_cast<off_t>(bytes)) != 0) {
        close(descriptor);
        return nullptr;
    }
    return {new SharedMemory{descriptor, bytes}, [](const SharedMemory* memory) {
                close(memory->descriptor);
                delete memory; // NOLINT: this is the deleter of the shared pointer.
            }};
}

} // namespace

std::unique_ptr<CaptureBuffer> CaptureBuffer::make(wl_shm* shm, PixelSize size, std::uint32_t format) {
    SharedFrame frame;
    frame.stride = static_cast<std::size_t>(size.width) * pixelBytes;
    frame.size = size;
    frame.visible = {0, 0, size.width, size.height};
    frame.memory = allocate(frame.stride * static_cast<std::size_t>(size.height));
    if (!frame.memory)
        return nullptr;
    auto* pool =
        wl_shm_create_pool(shm, frame.memory->descriptor, static_cast<std::int32_t>(frame.memory->size));
    auto* buffer = wl_shm_pool_create_buffer(pool, 0, size.width, size.height,
                                             static_cast<std::int32_t>(frame.stride), format);
    wl_shm_pool_destroy(pool);
    return std::unique_ptr<CaptureBuffer>(new CaptureBuffer(buffer, std::move(frame)));
}

CaptureBuffer::CaptureBuffer(wl_buffer* buffer, SharedFrame whole)
    : buffer(buffer), whole(std::move(whole)) {}

CaptureBuffer::~CaptureBuffer() {
    wl_buffer_destroy(buffer);
}

} // namespace mirrolet::platform::desktop::wayland
