#pragma once

#include "platform/appkit/NSApplication.h"

#include <memory>
#include <utility>

namespace mirrolet::platform {

/// A view that shows nothing.
struct EmptyView {};

/// The scene of an application that opens no window at launch; its content is shown only on demand.
template <class Content> struct Settings { Content content; };

/// Makes the one delegate of the application and keeps it as long as the application lives.
template <class Delegate> class NSApplicationDelegateAdaptor {
  public:
    NSApplicationDelegateAdaptor() : delegate(Delegate::make()) {
        NSApplication::shared().setDelegate(delegate);
    }

  private:
    std::shared_ptr<Delegate> delegate;
};

/// Runs an application object until it terminates, and returns the exit status. The NSApplication and the
/// desktop must exist already.
template <class App> int runApplication() {
    const App app;
    (void)app
        .body(); // Only a scene that opens windows at launch would be shown here, and there is no such scene.
    return NSApplication::shared().run();
}

} // namespace mirrolet::platform
