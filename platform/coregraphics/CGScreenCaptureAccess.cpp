#include "platform/coregraphics/CGScreenCaptureAccess.h"

#include "platform/desktop/Desktop.h"

namespace mirrolet::platform {

bool CGPreflightScreenCaptureAccess() {
    return desktop::Desktop::current().capture().permitted();
}

bool CGRequestScreenCaptureAccess() {
    return CGPreflightScreenCaptureAccess();
}

} // namespace mirrolet::platform
