#pragma once

#include <functional>
#include <memory>

namespace mirrolet::platform {

/// The program's object on the session bus. Its name is "app.mirrolet.Mirrolet". Its interface is
/// "org.freedesktop.Application", through which a desktop starts an application or brings one to the front. A
/// second process of the same session waits for the name.
class ApplicationService {
  public:
    /// Calls `activate` on the main queue for each activation, until this object is destroyed. Never waits
    /// for the bus.
    explicit ApplicationService(std::function<void()> activate);
    ~ApplicationService();
    ApplicationService(const ApplicationService&) = delete;
    ApplicationService& operator=(const ApplicationService&) = delete;

  private:
    struct Service;
    std::shared_ptr<Service> service;
};

} // namespace mirrolet::platform
