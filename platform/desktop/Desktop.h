#pragma once

#include "platform/desktop/Applications.h"
#include "platform/desktop/HotKeys.h"
#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/TrayHosts.h"
#include "platform/desktop/WindowCapture.h"
#include "platform/desktop/WindowList.h"
#include "platform/desktop/WindowPresenter.h"
#include "platform/desktop/WorkArea.h"

#include <cstdint>
#include <memory>

namespace mirrolet::platform::desktop {

/// The desktop as the platform layer sees it. There is one object per process, made by a backend. It is set
/// at start, before any other part of the platform layer is used. Tests set a FakeDesktop.
class Desktop {
  public:
    virtual ~Desktop() = default;
    virtual WindowList& windowList() = 0;
    virtual Applications& applications() = 0;
    virtual WindowCapture& capture() = 0;
    virtual HotKeys& hotKeys() = 0;
    /// Returns the tray hosts. By default there are never any, which fits a desktop that takes all status
    /// icons from the session bus.
    virtual TrayHosts& trayHosts();
    /// Returns the work area. By default nothing is reserved.
    virtual WorkArea& workArea();
    /// Returns whether windows can be translucent now. The answer may change at any time. Any thread.
    [[nodiscard]] virtual bool isComposited() const = 0;
    /// Makes a presenter for the window; nullptr if the server cannot compose. The caller then draws the
    /// window itself from read-back pictures.
    virtual std::unique_ptr<WindowPresenter> makePresenter(WindowNumber window) = 0;
    virtual std::unique_ptr<PanelWindow> makePanelWindow(WindowNumber window, PanelStacking stacking) = 0;

    /// The process's desktop. Setting takes ownership; nullptr at shutdown.
    static Desktop& current();
    static void setCurrent(std::unique_ptr<Desktop> desktop);
};

} // namespace mirrolet::platform::desktop
