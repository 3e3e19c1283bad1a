#pragma once

#include "platform/appkit/InstanceSocket.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace mirrolet::platform {

/// Lets only one process of the program run for each user and display. The running process owns an address in
/// the kernel. The kernel removes the address however the process ends. No lock file is left behind, and no
/// session bus is needed. If there is a session bus, desktops can also reach the program by the name
/// "app.mirrolet.Mirrolet".
class SingleInstance {
  public:
    using Start = InstanceSocket::Claim;

    SingleInstance();
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// Finds out if another process of the program runs for this display. Call this once, with the value of
    /// DISPLAY. A screen number in that value is ignored. Waits for the other process's answer no longer than
    /// `patience`.
    Start claim(const std::string& display,
                std::chrono::milliseconds patience = std::chrono::milliseconds(1500));
    /// Sets the function that is called on the main thread each time that the user starts the program again.
    /// Starts between claim() and this call are reported too. Call this once, after the application object
    /// was made.
    void setOnActivate(std::function<void()> activate);

  private:
    struct State;
    std::shared_ptr<State> state;
};

} // namespace mirrolet::platform
