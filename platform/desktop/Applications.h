#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace mirrolet::platform::desktop {

/// A running application, which is one process together with one desktop entry. A process can run several
/// applications, such as the web applications of one browser. The first application of a process has the PID
/// as its number `pid`. Each further application of the process has a number above the highest possible PID,
/// so that no two applications share a number.
struct Application {
    std::int32_t pid = 0;
    /// The desktop entry's name. Without an entry, the class from WM_CLASS or the name of the process.
    std::string name;
    std::optional<std::string> identifier; ///< The desktop file ID without ".desktop".
};

class Applications {
  public:
    virtual ~Applications() = default;
    /// Returns the application whose window has the focus. While a panel of this process has the focus,
    /// returns the application that had the focus before. Returns none if no application has the focus. May
    /// be called on any thread.
    virtual std::optional<Application> frontmost() = 0;
    /// Returns the application that has this number. WindowRow::ownerPid holds such numbers. Returns none if
    /// the application is unknown or has ended. May be called on any thread.
    virtual std::optional<Application> running(std::int32_t pid) = 0;
};

} // namespace mirrolet::platform::desktop
