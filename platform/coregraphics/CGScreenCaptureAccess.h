#pragma once

namespace mirrolet::platform {

/// Whether this program may read the windows of others. On a desktop without a permission to grant, this is
/// whether its server can do it. Any thread.
bool CGPreflightScreenCaptureAccess();
/// The same, after asking the user where there is somebody to ask: here there never is.
bool CGRequestScreenCaptureAccess();

} // namespace mirrolet::platform
