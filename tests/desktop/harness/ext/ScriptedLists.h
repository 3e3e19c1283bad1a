#pragma once

#include "tests/desktop/harness/ext/ScriptedWindow.h"

namespace mirrolet::harness {

// The entries of the ScriptedCompositor's two lists of windows. All functions are for the compositor's
// thread.

/// Adds the window to a client's ext list.
void listWindow(ScriptedWindow& window, wl_resource* list);
/// Adds the window to a client's wlr list.
void manageWindow(ScriptedWindow& window, wl_resource* manager);
/// Sends the window's title to an entry of the ext list.
void sendExtTitle(wl_resource* handle, const ScriptedWindow& window);
/// Sends the window's title to an entry of the wlr list.
void sendWlrTitle(wl_resource* handle, const ScriptedWindow& window);
/// Sends the window's states to an entry of the wlr list.
void sendStates(wl_resource* handle, const ScriptedWindow& window);

} // namespace mirrolet::harness
