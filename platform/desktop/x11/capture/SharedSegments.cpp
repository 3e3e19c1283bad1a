#include "platform/desktop/x11/capture/SharedSegments.h"

#include <algorithm>
#include <fcntl.h>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

/// The server answers BadAccess or BadAlloc if it cannot map the memory, and BadMatch or BadValue if the
/// descriptor does not stand for memory.
constexpr ErrorSet notMappable{XError::access, XError::alloc, XError::match, XError::value};

} // namespace

xcb_shm_seg_t SharedSegments::attach(const std::shared_ptr<const SharedMemory>& memory) {
    std::erase_if(segments, [](const Segment& segment) { return segment.memory.expired(); });
    const auto known = std::ranges::find_if(
        segments, [&](const Segment& segment) { return segment.memory.lock() == memory; });
    if (known != segments.end())
        return known->attached.id();
    const int descriptor = fcntl(memory->descriptor, F_DUPFD_CLOEXEC, 0); // XCB closes the descriptor.
    if (descriptor < 0)
        return 0;
    const auto id = xcb_generate_id(connection.xcb());
    constexpr std::uint8_t readOnly = 1;
    if (!connection.succeeds(xcb_shm_attach_fd_checked(connection.xcb(), id, descriptor, readOnly),
                             notMappable))
        return 0;
    segments.push_back({memory, {connection, id}});
    return id;
}

void SharedSegments::forget(const std::shared_ptr<const SharedMemory>& memory) {
    std::erase_if(segments, [&](const Segment& segment) { return segment.memory.lock() == memory; });
}

} // namespace mirrolet::platform::desktop::x11
