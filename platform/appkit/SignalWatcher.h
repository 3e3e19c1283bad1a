#pragma once

#include <QSocketNotifier>

#include <functional>

namespace mirrolet::platform {

/// Calls a function on the main thread when the process receives SIGTERM, SIGINT or SIGHUP. At most one such
/// object exists in a process.
class SignalWatcher {
  public:
    explicit SignalWatcher(std::function<void()> endRequested);
    ~SignalWatcher();
    SignalWatcher(const SignalWatcher&) = delete;
    SignalWatcher& operator=(const SignalWatcher&) = delete;

  private:
    std::function<void()> handler;
    int readEnd;
    QSocketNotifier notifier;
};

} // namespace mirrolet::platform
