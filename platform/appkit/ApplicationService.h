#pragma once

#include <functional>
#include <memory>

namespace mirrolet::platform {

/// The program's object on the session bus, with the name "app.mirrolet.Mirrolet". A desktop starts the
/// program or brings it to the front through the interface "org.freedesktop.Application". If another process
/// of the login session has the name, this process gets the name once the other one ends.
class ApplicationService {
  public:
    /// Calls `activate` on the main queue each time that the desktop activates the program, until this object
    /// is destroyed. Never waits for the bus.
    explicit ApplicationService(std::function<void()> activate);
    ~ApplicationService();
    ApplicationService(const ApplicationService&) = delete;
    ApplicationService& operator=(const ApplicationService&) = delete;

  private:
    struct Service;
    std::shared_ptr<Service> service;
};

} // namespace mirrolet::platform
