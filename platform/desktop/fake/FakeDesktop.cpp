#include "platform/desktop/fake/FakeDesktop.h"

#include <utility>

namespace mirrolet::platform::desktop::fake {

FakeDesktop& FakeDesktop::install() {
    auto made = std::make_unique<FakeDesktop>();
    auto& desktop = *made;
    setCurrent(std::move(made));
    return desktop;
}

std::unique_ptr<WindowPresenter> FakeDesktop::makePresenter(WindowNumber) {
    auto record = std::make_shared<PresenterRecord>();
    presenterRecords.push_back(record);
    return std::make_unique<FakePresenter>(std::move(record), noted);
}

std::unique_ptr<PanelWindow> FakeDesktop::makePanelWindow(WindowNumber, PanelStacking stacking) {
    auto record = std::make_shared<PanelWindowRecord>();
    record->stacking = stacking;
    panelRecords.push_back(record);
    return std::make_unique<FakePanelWindow>(std::move(record), noted);
}

std::vector<std::string> FakeDesktop::misuses() const {
    auto all = noted->all();
    if (!theHotKeys.held().empty())
        all.emplace_back("a hot key is still grabbed");
    if (theHotKeys.isSuspended())
        all.emplace_back("hot keys are still suspended");
    if (theCapture.imagesHeld() > 0)
        all.emplace_back("window images are still held");
    return all;
}

} // namespace mirrolet::platform::desktop::fake
