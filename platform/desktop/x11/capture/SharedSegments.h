#pragma once

#include "platform/desktop/FrameImporter.h"
#include "platform/desktop/x11/server/ServerResource.h"

#include <xcb/shm.h>

#include <memory>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// Has the X server map the memory of other processes (MIT-SHM), each memory only once. To be used by one
/// thread at a time.
class SharedSegments {
  public:
    explicit SharedSegments(X11Connection& connection) : connection(connection) {}

    /// Returns the server's number of the memory, or 0 if the server cannot map the memory. Memory that is
    /// new is attached first, which waits for the server. Also detaches memory that no longer exists.
    xcb_shm_seg_t attach(const std::shared_ptr<const SharedMemory>& memory);
    /// Forgets the memory. To be called when the server can no longer read the memory.
    void forget(const std::shared_ptr<const SharedMemory>& memory);

  private:
    struct Segment {
        std::weak_ptr<const SharedMemory> memory;
        ServerResource<&xcb_shm_detach, XError::unknown> attached;
    };

    X11Connection& connection;
    std::vector<Segment> segments;
};

} // namespace mirrolet::platform::desktop::x11
