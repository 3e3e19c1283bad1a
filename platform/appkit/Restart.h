#pragma once

namespace mirrolet::platform {

/// Replaces this process by a new run of the same program, which then waits for the X server. Returns only if
/// the system refuses. May be called on any thread.
void restartProgram();

/// Returns whether this process replaces one that has lost its X server, so that the server may not be up
/// yet. Returns true only once.
bool takeRestarted();

} // namespace mirrolet::platform
