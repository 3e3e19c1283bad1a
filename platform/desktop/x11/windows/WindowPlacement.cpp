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
    // Each monitor can have a workspace of its own. A viewable window is then on screen even if its workspace
    // is not the current one. The workspace therefore counts only if windows on other workspaces look shown
    // too.
    return placement.viewable && !placement.minimized && !placement.iconic &&
           !(elsewhere && workspaces.othersLookShown);
}

} // namespace mirrolet::platform::desktop::x11
