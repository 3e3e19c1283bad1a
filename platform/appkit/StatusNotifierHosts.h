#pragma once

#include <functional>
#include <memory>

namespace mirrolet::platform {

/// Whether the session bus has a place for status icons (a StatusNotifier host). Asked and watched without
/// the toolkit, which would take a "not yet" for a "never", and without waiting for anyone. Main thread.
class StatusNotifierHosts {
  public:
    /// `changed` is called on the main queue with the first answer and after each change: not yet while the
    /// registry of hosts is there but silent.
    explicit StatusNotifierHosts(std::function<void(bool present)> changed);
    ~StatusNotifierHosts();
    StatusNotifierHosts(const StatusNotifierHosts&) = delete;
    StatusNotifierHosts& operator=(const StatusNotifierHosts&) = delete;

  private:
    struct Watch;
    std::shared_ptr<Watch> watch;
};

} // namespace mirrolet::platform
