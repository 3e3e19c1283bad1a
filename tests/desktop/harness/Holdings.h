#pragma once

#include "tests/desktop/harness/XClient.h"

#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>
#include <sys/types.h>

namespace mirrolet::harness {

/// What a process holds: of its machine, and of the X server through all of its connections.
struct Holdings {
    long residentKib = 0;
    /// Open descriptors, threads, connections to the server, and the server's resources by the name of their
    /// kind ("PIXMAP", "PICTURE", ...). A kind with none is left out.
    std::map<std::string, long> counts;
    long pixmapBytes = 0;

    /// Throws HarnessError if the process is gone.
    static Holdings of(XClient& client, pid_t process);
    /// True if nothing but memory has grown.
    [[nodiscard]] bool noMoreThan(const Holdings& before) const;
};

/// What the server keeps for the connection that a resource belongs to: how many of each kind, by its name.
std::map<std::string, long> resourcesOf(XClient& client, std::uint32_t resource);

std::ostream& operator<<(std::ostream& stream, const Holdings& holdings);

} // namespace mirrolet::harness
