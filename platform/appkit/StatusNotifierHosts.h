#pragma once

#include <functional>
#include <memory>

namespace mirrolet::platform {

/// A watch that tells whether the session bus has a place for status icons (a StatusNotifier host). Qt is not
/// asked, because Qt would take a "not yet" for a "never". Never waits for the bus. Main thread.
class StatusNotifierHosts {
  public:
    /// Calls `changed` on the main queue with the first answer and after each change. While the registry of
    /// hosts exists but does not reply, there is no answer.
    explicit StatusNotifierHosts(std::function<void(bool present)> changed);
    ~StatusNotifierHosts();
    StatusNotifierHosts(const StatusNotifierHosts&) = delete;
    StatusNotifierHosts& operator=(const StatusNotifierHosts&) = delete;

  private:
    struct Watch;
    std::shared_ptr<Watch> watch;
};

} // namespace mirrolet::platform
