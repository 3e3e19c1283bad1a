#pragma once

#include "platform/appkit/InstanceSocket.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace mirrolet::platform {

/// A claim that lets only one program run for each user and display. The claim is an address in the kernel,
/// which the kernel removes however the process ends. No lock is left behind, and no session bus is needed.
/// On a session bus, desktops can also reach the program by the name "app.mirrolet.Mirrolet".
class SingleInstance {
  public:
    using Start = InstanceSocket::Claim;

    SingleInstance();
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// Claims the display. Call this once, with the value of DISPLAY. The screen in that value does not
    /// matter. Waits for an answer no longer than `patience`.
    Start claim(const std::string& display,
                std::chrono::milliseconds patience = std::chrono::milliseconds(1500));
    /// Sets the function that is called on the main thread for each later start of the program, including
    /// starts since the claim. Call this once, when the application object exists.
    void setOnActivate(std::function<void()> activate);

  private:
    struct State;
    std::shared_ptr<State> state;
};

} // namespace mirrolet::platform
