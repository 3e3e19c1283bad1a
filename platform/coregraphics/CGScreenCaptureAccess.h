#pragma once

namespace mirrolet::platform {

/// Whether this program may read the windows of others. On a desktop that asks for no permission, whether its
/// server can do it. Any thread.
bool CGPreflightScreenCaptureAccess();
/// The same. This desktop has nothing to ask the user.
bool CGRequestScreenCaptureAccess();

} // namespace mirrolet::platform
