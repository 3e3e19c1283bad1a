#pragma once

#include <functional>
#include <memory>

namespace mirrolet::platform {

/// Reports whether there is a program on the session bus that shows status icons (a StatusNotifier host).
/// Qt's own answer is not used, because Qt does not notice a host that starts later. Never waits for the bus.
/// Main thread.
class StatusNotifierHosts {
  public:
    /// Calls `changed` on the main queue with the first answer and after each change. Does not call `changed`
    /// while the registry of hosts exists but does not answer.
    explicit StatusNotifierHosts(std::function<void(bool present)> changed);
    ~StatusNotifierHosts();
    StatusNotifierHosts(const StatusNotifierHosts&) = delete;
    StatusNotifierHosts& operator=(const StatusNotifierHosts&) = delete;

  private:
    struct Watch;
    std::shared_ptr<Watch> watch;
};

} // namespace mirrolet::platform
