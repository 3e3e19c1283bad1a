#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace mirrolet::platform::desktop {

/// A running application: a pair of process and desktop entry. The number of the first application of a
/// process is the process identifier. Further applications of the same process (web applications of one
/// browser) get numbers above the highest PID of the kernel.
struct Application {
    std::int32_t pid = 0;
    std::string name;                      ///< Desktop entry's name, else the WM_CLASS class.
    std::optional<std::string> identifier; ///< File ID of the desktop entry without ".desktop".
};

class Applications {
  public:
    virtual ~Applications() = default;
    /// Returns the application whose window has the focus; none if there is none. While a panel of this
    /// process has the focus, returns the application that had the focus before. Any thread.
    virtual std::optional<Application> frontmost() = 0;
    /// Returns the application whose number the window list gave; none if that application is unknown or has
    /// ended. Any thread.
    virtual std::optional<Application> running(std::int32_t pid) = 0;
};

} // namespace mirrolet::platform::desktop
