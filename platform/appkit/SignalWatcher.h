#pragma once

#include <QSocketNotifier>

#include <functional>

namespace mirrolet::platform {

/// A watch that turns SIGTERM, SIGINT and SIGHUP into a call on the main thread. One per process.
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
