#pragma once

#include "platform/swiftui/View.h"

namespace mirrolet {

/// The content of the settings window: a General and a PiP tab. Every control writes to the shared settings
/// store at once.
struct SettingsView {
    [[nodiscard]] platform::swiftui::View body() const;
};

} // namespace mirrolet
