#pragma once

#include "tests/desktop/harness/ext/ScriptedWindow.h"

struct wl_display;

namespace mirrolet::harness {

struct ScriptedFrame;

/// A client's capture session. Lives as long as the client's object.
struct ScriptedSession {
    ScriptedWindow* window = nullptr;
    wl_resource* resource = nullptr;
    ScriptedFrame* frame = nullptr;
    platform::desktop::PixelRect damage; ///< What has changed since the last frame.
    bool isStopped = false;
};

/// Adds the globals with which clients capture windows (ext-image-copy-capture-v1 and the source of windows).
/// Ends the connection of a client that breaks a rule of the protocol. All functions are for the thread of
/// the compositor.
void addCaptureGlobals(wl_display* display);

/// Tells a session what its buffers must be like.
void sendConstraints(const ScriptedSession& session);
/// Answers the session's pending frame if there is something to answer: a failure, or a change of the window.
/// Copies only what has changed since the last frame and what the client has handed in as changed.
void answerPending(ScriptedSession& session);
/// Notes a change of the window, and answers the pending frames.
void damage(ScriptedWindow& window, const platform::desktop::PixelRect& area);
/// Stops a session, once.
void stopSession(ScriptedSession& session);

} // namespace mirrolet::harness
