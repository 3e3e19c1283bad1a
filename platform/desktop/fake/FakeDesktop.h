#pragma once

#include "platform/desktop/Desktop.h"
#include "platform/desktop/fake/FakeApplications.h"
#include "platform/desktop/fake/FakeHotKeys.h"
#include "platform/desktop/fake/FakePanelWindow.h"
#include "platform/desktop/fake/FakePresenter.h"
#include "platform/desktop/fake/FakeWindowCapture.h"
#include "platform/desktop/fake/FakeWindowList.h"
#include "platform/desktop/fake/Misuses.h"

#include <memory>
#include <vector>

namespace mirrolet::platform::desktop::fake {

/// A desktop that a test scripts and examines. A record from presenters() or panelWindows() outlives the
/// desktop if the test still holds it.
class FakeDesktop final : public Desktop {
  public:
    FakeDesktop() = default;
    /// Makes a FakeDesktop and sets it as the desktop of the process. The object lives until
    /// Desktop::setCurrent() is called again.
    static FakeDesktop& install();

    FakeWindowList& windowList() override { return theWindowList; }
    FakeApplications& applications() override { return theApplications; }
    FakeWindowCapture& capture() override { return theCapture; }
    FakeHotKeys& hotKeys() override { return theHotKeys; }
    [[nodiscard]] bool isComposited() const override { return true; }
    std::unique_ptr<WindowPresenter> makePresenter(WindowNumber window) override;
    std::unique_ptr<PanelWindow> makePanelWindow(WindowNumber window, PanelStacking stacking) override;

    /// Returns a record for each presenter that was made so far, in order.
    [[nodiscard]] const auto& presenters() const { return presenterRecords; }
    /// Returns a record for each panel window that was made so far, in order.
    [[nodiscard]] const auto& panelWindows() const { return panelRecords; }
    /// Returns a description of each function call that broke a rule of the interface. Also describes what is
    /// still held: grabs of hot keys, their suspension, and window images. A test expects an empty list. The
    /// list is complete once all presenters and panel windows are destroyed.
    [[nodiscard]] std::vector<std::string> misuses() const;

  private:
    std::shared_ptr<Misuses> noted = std::make_shared<Misuses>();
    FakeWindowList theWindowList;
    FakeApplications theApplications;
    FakeWindowCapture theCapture;
    FakeHotKeys theHotKeys{noted};
    std::vector<std::shared_ptr<PresenterRecord>> presenterRecords;
    std::vector<std::shared_ptr<PanelWindowRecord>> panelRecords;
};

} // namespace mirrolet::platform::desktop::fake
