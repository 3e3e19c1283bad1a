#pragma once

#include "platform/desktop/Desktop.h"

#include <memory>
#include <utility>

namespace mirrolet::platform::desktop::wayland {

/// A desktop that passes all calls on to another desktop, which shows this program's windows. A derived class
/// replaces what its session provides by itself, for example the window list and the hot keys.
class CombinedDesktop : public Desktop {
  public:
    explicit CombinedDesktop(std::unique_ptr<Desktop> shown) : shown(std::move(shown)) {}

    WindowList& windowList() override { return shown->windowList(); }
    Applications& applications() override { return shown->applications(); }
    WindowCapture& capture() override { return shown->capture(); }
    HotKeys& hotKeys() override { return shown->hotKeys(); }
    TrayHosts& trayHosts() override { return shown->trayHosts(); }
    WorkArea& workArea() override { return shown->workArea(); }
    [[nodiscard]] bool isComposited() const override { return shown->isComposited(); }
    AnyCancellable subscribeComposited(std::function<void()> changed) override {
        return shown->subscribeComposited(std::move(changed));
    }
    std::unique_ptr<WindowPresenter> makePresenter(WindowNumber window) override {
        return shown->makePresenter(window);
    }
    std::unique_ptr<FrameImporter> makeFrameImporter() override { return shown->makeFrameImporter(); }
    /// A compositor sends keys only to managed windows, so the stacking is one that the compositor manages.
    /// XWayland would tell any other window that it has the focus, but the keys would go elsewhere.
    [[nodiscard]] PanelStacking focusedPanelStacking() const override { return PanelStacking::dialog; }
    std::unique_ptr<PanelWindow> makePanelWindow(WindowNumber window, PanelStacking stacking) override {
        return shown->makePanelWindow(window, stacking);
    }

  protected:
    const std::unique_ptr<Desktop> shown;
};

} // namespace mirrolet::platform::desktop::wayland
