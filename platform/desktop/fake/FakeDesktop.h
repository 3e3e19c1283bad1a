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

/// The desktop as a test scripts it. Records and misuses outlive the desktop if somebody still holds them.
class FakeDesktop final : public Desktop {
  public:
    FakeDesktop() = default;
    /// Makes a fake desktop the desktop of the process. It lives until another desktop, or nullptr, is set.
    static FakeDesktop& install();

    FakeWindowList& windowList() override { return theWindowList; }
    FakeApplications& applications() override { return theApplications; }
    FakeWindowCapture& capture() override { return theCapture; }
    FakeHotKeys& hotKeys() override { return theHotKeys; }
    [[nodiscard]] bool isComposited() const override { return true; }
    std::unique_ptr<WindowPresenter> makePresenter(WindowNumber window) override;
    std::unique_ptr<PanelWindow> makePanelWindow(WindowNumber window, PanelStacking stacking) override;

    /// Returns the records of every presenter (or panel window) made so far, in the order of their making.
    [[nodiscard]] const auto& presenters() const { return presenterRecords; }
    [[nodiscard]] const auto& panelWindows() const { return panelRecords; }
    /// Returns the forbidden calls that were made; a test expects none. The list is complete once all
    /// presenters and panel windows are destroyed.
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
