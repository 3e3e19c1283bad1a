#pragma once

#include "platform/desktop/PixelRects.h"
#include "tests/desktop/harness/Picture.h"

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

struct wl_resource;

namespace mirrolet::harness {

struct ScriptedSession;

/// A window of the ScriptedCompositor, and the clients' objects for it.
struct ScriptedWindow {
    std::string title;
    std::string application;
    bool hidesApplication =
        false;                ///< Whether the ext list lacks the application, as for X11 windows on sway.
    std::uint32_t states = 0; ///< One bit for each state of the wlr protocol.
    std::vector<std::uint32_t> formats;
    Picture picture;

    std::vector<wl_resource*> listed;
    std::vector<wl_resource*> managed;
    std::vector<ScriptedSession*> sessions;
    std::deque<std::uint32_t> failures; ///< Reasons with which the next frames fail.
    int framesAsked = 0;
    int sessionsOpened = 0;
    bool isClosed = false;

    [[nodiscard]] platform::desktop::PixelRect whole() const { return {0, 0, picture.width, picture.height}; }
};

} // namespace mirrolet::harness
