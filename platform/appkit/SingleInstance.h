#pragma once

#include "platform/appkit/InstanceSocket.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace mirrolet::platform {

/// Makes sure that one program runs for each user and display. The claim is an address in the kernel that
/// goes with the process, however the process ends: no lock is left behind, and no session bus is needed.
/// Where there is a bus, desktops reach the program there too, by the name "app.mirrolet.Mirrolet".
class SingleInstance {
  public:
    using Start = InstanceSocket::Claim;

    SingleInstance();
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// Called once, with the display as DISPLAY has it; the screen in it does not matter. Waits for an answer
    /// no longer than `patience`.
    Start claim(const std::string& display,
                std::chrono::milliseconds patience = std::chrono::milliseconds(1500));
    /// Set once, when the application object exists. Called on the main thread for each later start of the
    /// program, also for those since the claim.
    void setOnActivate(std::function<void()> activate);

  private:
    struct State;
    std::shared_ptr<State> state;
};

} // namespace mirrolet::platform
