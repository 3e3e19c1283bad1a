#pragma once

namespace mirrolet::platform {

/// Returns whether this program may read the windows of others. On a desktop that asks for no permission,
/// returns whether the desktop's server is able to give their pictures. Any thread.
bool CGPreflightScreenCaptureAccess();
/// Returns the same as CGPreflightScreenCaptureAccess(), because this desktop has nothing to ask the user.
bool CGRequestScreenCaptureAccess();

} // namespace mirrolet::platform
