#pragma once

#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/WindowList.h"
#include "platform/desktop/fake/Misuses.h"

#include <memory>
#include <utility>

namespace mirrolet::platform::desktop::fake {

/// The last values that a panel's window was given. Outlives the panel window.
struct PanelWindowRecord {
    WindowNumber window = 0;
    PanelStacking stacking = PanelStacking::floating;
    bool alive = true;
    bool shown = false;
    int timesShown = 0;
    int level = 0;
    bool hasFocus = false;
    int timesFocused = 0;
    PixelSize corners;
    double cornerRadius = 0;
    PanelShadow shadow;
};

/// A panel window that records instead of stacking. Notes as a misuse a show that was not announced, and a
/// hidden panel that takes the focus.
class FakePanelWindow final : public PanelWindow {
  public:
    FakePanelWindow(std::shared_ptr<PanelWindowRecord> record, std::shared_ptr<Misuses> misuses)
        : record(std::move(record)), misuses(std::move(misuses)) {}
    ~FakePanelWindow() override;
    FakePanelWindow(const FakePanelWindow&) = delete;
    FakePanelWindow& operator=(const FakePanelWindow&) = delete;

    void willShow() override { announced = true; }
    void didShow() override;
    void willHide() override {}
    void didHide() override { record->shown = false; }
    void setLevel(int level) override { record->level = level; }
    void takeFocus() override;
    void returnFocus() override { record->hasFocus = false; }
    void setCorners(PixelSize size, double radius) override;
    void setShadow(const PanelShadow& shadow) override { record->shadow = shadow; }

  private:
    std::shared_ptr<PanelWindowRecord> record;
    std::shared_ptr<Misuses> misuses;
    bool announced = false;
};

} // namespace mirrolet::platform::desktop::fake
