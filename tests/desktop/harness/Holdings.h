#pragma once

#include "tests/desktop/harness/XClient.h"

#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>
#include <sys/types.h>

namespace mirrolet::harness {

/// The resources that a process holds on its machine, and on the X server through all of its connections.
struct Holdings {
    long residentKib = 0;
    /// The numbers of open descriptors, threads, connections to the server, and the server's resources by the
    /// name of their kind ("PIXMAP", "PICTURE", ...). A kind without resources is left out.
    std::map<std::string, long> counts;
    long pixmapBytes = 0;

    /// Counts what the process holds now. Throws HarnessError if the process is gone.
    static Holdings of(XClient& client, pid_t process);
    /// Returns whether no number except that of the memory has grown.
    [[nodiscard]] bool noMoreThan(const Holdings& before) const;
};

/// Returns how many server resources of each kind the connection that owns `resource` holds, by the kind's
/// name.
std::map<std::string, long> resourcesOf(XClient& client, std::uint32_t resource);

std::ostream& operator<<(std::ostream& stream, const Holdings& holdings);

} // namespace mirrolet::harness
