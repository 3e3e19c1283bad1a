#pragma once

#include "platform/appkit/InstanceSocket.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace mirrolet::platform {

/// One running program for each user and display. The claim is an address in the kernel that goes with the
/// process, however that ends: there is no stale lock, and no session bus is needed. Where there is a bus,
/// the program can be reached there too, by the name "app.mirrolet.Mirrolet", as desktops start and activate
/// applications.
class SingleInstance {
  public:
    using Start = InstanceSocket::Claim;

    SingleInstance();
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// Once. The display as DISPLAY has it; its screen does not matter. Does not wait longer than `patience`.
    Start claim(const std::string& display,
                std::chrono::milliseconds patience = std::chrono::milliseconds(1500));
    /// What later starts bring about: called on the main thread, also for those that came since the claim.
    /// With the application object there; once.
    void setOnActivate(std::function<void()> activate);

  private:
    struct State;
    std::shared_ptr<State> state;
};

} // namespace mirrolet::platform
