#pragma once

#include "tests/desktop/harness/XClient.h"

#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>
#include <sys/types.h>

namespace mirrolet::harness {

/// Counts the resources that a process holds on its machine and, through all of its connections, on the X
/// server.
struct Holdings {
    long residentKib = 0;
    /// The number of resources of each kind. The keys are "descriptors" (open files), "threads",
    /// "connections" (to the X server), and the X server's names of its kinds of resources, such as "PIXMAP"
    /// and "PICTURE". A kind without resources is left out.
    std::map<std::string, long> counts;
    long pixmapBytes = 0;

    /// Counts what the process holds now. Throws HarnessError if the process is gone.
    static Holdings of(XClient& client, pid_t process);
    /// Returns whether each count and `pixmapBytes` are at most as large as in `before`. Ignores
    /// `residentKib`.
    [[nodiscard]] bool noMoreThan(const Holdings& before) const;
};

/// Finds the connection that owns `resource`. Returns how many server resources of each kind that connection
/// holds. The keys are the names of the kinds.
std::map<std::string, long> resourcesOf(XClient& client, std::uint32_t resource);

std::ostream& operator<<(std::ostream& stream, const Holdings& holdings);

} // namespace mirrolet::harness
