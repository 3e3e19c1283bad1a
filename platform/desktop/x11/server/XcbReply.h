#pragma once

#include <cstdlib>
#include <memory>

namespace mirrolet::platform::desktop::x11 {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); } // NOLINT: XCB replies come from malloc.
};

/// Owns a reply, an event or an error that XCB allocated.
template <typename T> using XcbReply = std::unique_ptr<T, FreeDeleter>;

} // namespace mirrolet::platform::desktop::x11
