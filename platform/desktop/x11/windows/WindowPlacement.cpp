#include "platform/desktop/x11/windows/WindowPlacement.h"

namespace mirrolet::platform::desktop::x11 {

namespace {
constexpr std::uint32_t onAllWorkspaces = 0xFFFFFFFF;
}

bool isOnAnotherWorkspace(const WindowPlacement& placement, const Workspaces& workspaces) {
    return placement.workspace && workspaces.current && *placement.workspace != onAllWorkspaces &&
           *placement.workspace != *workspaces.current;
}

bool isOnScreen(const WindowPlacement& placement, const Workspaces& workspaces, bool mirrored) {
    const bool elsewhere = isOnAnotherWorkspace(placement, workspaces);
    if (mirrored)
        return placement.viewable || elsewhere;
    // Where each monitor has a workspace of its own, a viewable window is on screen although its workspace is
    // not the current one.
    return placement.viewable && !placement.minimized && !placement.iconic &&
           !(elsewhere && workspaces.othersLookShown);
}

} // namespace mirrolet::platform::desktop::x11
