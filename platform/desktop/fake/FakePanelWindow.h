#pragma once

#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/fake/Misuses.h"

#include <memory>
#include <utility>

namespace mirrolet::platform::desktop::fake {

/// Records the values that a FakePanelWindow was given last. The record outlives the panel window.
struct PanelWindowRecord {
    PanelStacking stacking = PanelStacking::floating;
    bool alive = true;
    bool shown = false;
    int level = 0;
    int timesFocused = 0;
};

/// A panel window that only records which of its functions are called. Notes two misuses: a didShow() without
/// willShow(), and a takeFocus() while the panel is hidden.
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
    void returnFocus() override {}
    void setCorners(PixelSize, double) override {}
    void setShadow(const PanelShadow&) override {}

  private:
    std::shared_ptr<PanelWindowRecord> record;
    std::shared_ptr<Misuses> misuses;
    bool announced = false;
};

} // namespace mirrolet::platform::desktop::fake
