#pragma once

#include "app/AppDelegate.h"
#include "platform/swiftui/App.h"

namespace mirrolet {

/// The application, in the form that runApplication() expects. Owns the delegate and opens no window at
/// launch.
struct MirroletApp {
    platform::NSApplicationDelegateAdaptor<AppDelegate> appDelegate;

    [[nodiscard]] platform::Settings<platform::EmptyView> body() const { return {}; }
};

} // namespace mirrolet
