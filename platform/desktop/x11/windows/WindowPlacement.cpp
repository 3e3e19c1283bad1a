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
    // A viewable window of a workspace that is not the current one is on screen where each monitor has a
    // workspace of its own.
    return placement.viewable && !placement.minimized && !placement.iconic &&
           !(elsewhere && workspaces.othersLookShown);
}

} // namespace mirrolet::platform::desktop::x11
