#pragma once

namespace mirrolet::platform {

/// Returns true if this program can capture the windows of other programs. This desktop asks for no
/// permission, so the answer depends on what the window server supports. Any thread.
bool CGPreflightScreenCaptureAccess();
/// Returns the same as CGPreflightScreenCaptureAccess(), because this desktop asks the user for no
/// permission.
bool CGRequestScreenCaptureAccess();

} // namespace mirrolet::platform
