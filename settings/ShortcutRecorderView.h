#pragma once

#include "platform/swiftui/Binding.h"
#include "platform/swiftui/NSViewRepresentable.h"

#include <cstdint>

namespace mirrolet {

/// A declarative view that shows a ShortcutRecorderNSView. The bindings hold the shortcut's virtual key code
/// and Carbon modifier mask.
struct ShortcutRecorderView : platform::swiftui::NSViewRepresentable<ShortcutRecorderView> {
    platform::swiftui::Binding<std::uint32_t> keyCode;
    platform::swiftui::Binding<std::uint32_t> modifiers;

    ShortcutRecorderView(platform::swiftui::Binding<std::uint32_t> keyCode,
                         platform::swiftui::Binding<std::uint32_t> modifiers)
        : keyCode(std::move(keyCode)), modifiers(std::move(modifiers)) {}

    [[nodiscard]] std::shared_ptr<platform::NSView> makeNSView() const;
    void updateNSView(platform::NSView& view) const;
    [[nodiscard]] std::vector<platform::swiftui::Observation> changes() const;
};

} // namespace mirrolet
