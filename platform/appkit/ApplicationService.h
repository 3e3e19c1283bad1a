#pragma once

#include <functional>
#include <memory>

namespace mirrolet::platform {

/// The program on the session bus, by the name "app.mirrolet.Mirrolet" and the interface
/// "org.freedesktop.Application", through which a desktop starts an application or brings one to the front. A
/// second process of the same session waits for the name.
class ApplicationService {
  public:
    /// `activate` is called on the main queue, until this is destroyed. Never waits for the bus.
    explicit ApplicationService(std::function<void()> activate);
    ~ApplicationService();
    ApplicationService(const ApplicationService&) = delete;
    ApplicationService& operator=(const ApplicationService&) = delete;

  private:
    struct Service;
    std::shared_ptr<Service> service;
};

} // namespace mirrolet::platform
