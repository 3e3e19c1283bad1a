#pragma once

#include "platform/appkit/NSApplication.h"

#include <memory>
#include <utility>

namespace mirrolet::platform {

/// A view that shows nothing.
struct EmptyView {};

/// The part of an application that describes its settings window. The window is not opened when the program
/// starts.
template <class Content> struct Settings { Content content; };

/// Makes the application's delegate, and keeps it as long as the application lives.
template <class Delegate> class NSApplicationDelegateAdaptor {
  public:
    NSApplicationDelegateAdaptor() : delegate(Delegate::make()) {
        NSApplication::shared().setDelegate(delegate);
    }

  private:
    std::shared_ptr<Delegate> delegate;
};

/// Runs an application until it terminates, and returns the exit status. The NSApplication and the backend
/// must exist already.
template <class App> int runApplication() {
    const App app;
    // The result is not used, because the settings window is not opened when the program starts.
    (void)app.body();
    return NSApplication::shared().run();
}

} // namespace mirrolet::platform
