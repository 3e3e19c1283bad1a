#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace mirrolet::platform::desktop {

/// A running application: a pair of process and desktop entry. The first application of a process is numbered
/// by the process identifier; further ones of the same process (web applications of one browser) get numbers
/// above the kernel's highest PID.
struct Application {
    std::int32_t pid = 0;
    std::string name;                      ///< Desktop entry's name, else the WM_CLASS class.
    std::optional<std::string> identifier; ///< File ID of the desktop entry without ".desktop".
};

class Applications {
  public:
    virtual ~Applications() = default;
    /// The application whose window has the focus. While a panel of this process has the focus, the
    /// application that had the focus before. None without one. Any thread.
    virtual std::optional<Application> frontmost() = 0;
    /// The application of a number that the window list gave. None once it is unknown or gone. Any thread.
    virtual std::optional<Application> running(std::int32_t pid) = 0;
};

} // namespace mirrolet::platform::desktop
