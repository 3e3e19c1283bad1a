#pragma once

#include "platform/desktop/WindowList.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/desktop/x11/windows/X11Applications.h"

#include <optional>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// The windows on screen, read in three round trips whatever their number: all requests of a step are sent
/// before the first reply is waited for. Any thread.
class X11WindowList final : public WindowList {
  public:
    X11WindowList(X11Connection& connection, X11Applications& applications)
        : connection(connection), applications(applications) {}

    std::optional<std::vector<WindowRow>> onScreenWindows() override;

  private:
    class Reading;

    X11Connection& connection;
    X11Applications& applications;
};

} // namespace mirrolet::platform::desktop::x11
