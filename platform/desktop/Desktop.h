#pragma once

#include "platform/desktop/Applications.h"
#include "platform/desktop/FrameImporter.h"
#include "platform/desktop/HotKeys.h"
#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/TrayHosts.h"
#include "platform/desktop/WindowCapture.h"
#include "platform/desktop/WindowList.h"
#include "platform/desktop/WindowPresenter.h"
#include "platform/desktop/WorkArea.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace mirrolet::platform::desktop {

/// Gives the platform layer access to the desktop. A backend implements this class. A process has one Desktop
/// object. setCurrent() sets this object at start, before any other part of the platform layer is used. Tests
/// set a FakeDesktop.
class Desktop {
  public:
    virtual ~Desktop() = default;
    virtual WindowList& windowList() = 0;
    virtual Applications& applications() = 0;
    virtual WindowCapture& capture() = 0;
    virtual HotKeys& hotKeys() = 0;
    /// Returns the object that tells whether a tray host runs. The default object tells that none ever runs,
    /// which fits a desktop that shows status icons through the session bus only.
    virtual TrayHosts& trayHosts();
    /// Returns the object that tells how much of a monitor docks reserve. The default object tells that
    /// nothing is reserved.
    virtual WorkArea& workArea();
    /// Returns whether windows can be translucent now. The answer may change at any time. May be called on
    /// any thread.
    [[nodiscard]] virtual bool isComposited() const = 0;
    /// Calls `changed` each time that isComposited() may have changed, on any thread. The calls end when the
    /// returned object is destroyed. The default never calls `changed`.
    // NOLINTNEXTLINE(performance-unnecessary-value-param): backends keep the function.
    [[nodiscard]] virtual AnyCancellable subscribeComposited(std::function<void()> /*changed*/) { return {}; }
    /// Makes a presenter, which draws the content of the window on the server. Returns nullptr if the server
    /// cannot compose pictures. The caller must then draw the window itself, with pixels from
    /// WindowImage::readBack().
    virtual std::unique_ptr<WindowPresenter> makePresenter(WindowNumber window) = 0;
    /// Makes an importer for the frames of one source window that another backend captures. Returns nullptr,
    /// which is the default, if the presenters show only windows that this backend captures.
    virtual std::unique_ptr<FrameImporter> makeFrameImporter();
    /// Returns the stacking for a panel that needs the focus. The default is floating, which fits a desktop
    /// on which an unmanaged window can get the focus.
    [[nodiscard]] virtual PanelStacking focusedPanelStacking() const { return PanelStacking::floating; }
    virtual std::unique_ptr<PanelWindow> makePanelWindow(WindowNumber window, PanelStacking stacking) = 0;

    /// Returns the desktop of this process. Ends the program if none is set.
    static Desktop& current();
    /// Sets the desktop of this process and takes ownership. Pass nullptr at shutdown.
    static void setCurrent(std::unique_ptr<Desktop> desktop);
};

} // namespace mirrolet::platform::desktop
