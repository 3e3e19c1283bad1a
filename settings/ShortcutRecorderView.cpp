#include "settings/ShortcutRecorderView.h"

#include "settings/ShortcutRecorderNSView.h"

namespace mirrolet {

using namespace platform;

std::shared_ptr<NSView> ShortcutRecorderView::makeNSView() const {
    const auto view = std::make_shared<ShortcutRecorderNSView>();
    view->onShortcutRecorded = [keyCode = keyCode, modifiers = modifiers](std::uint32_t newKeyCode,
                                                                          std::uint32_t newModifiers) {
        keyCode.set(newKeyCode);
        modifiers.set(newModifiers);
    };
    updateNSView(*view);
    return view;
}

void ShortcutRecorderView::updateNSView(NSView& view) const {
    static_cast<ShortcutRecorderNSView&>(view).setCurrentShortcut({keyCode.get(), modifiers.get()});
}

std::vector<swiftui::Observation> ShortcutRecorderView::changes() const {
    return {keyCode.changes(), modifiers.changes()};
}

} // namespace mirrolet
