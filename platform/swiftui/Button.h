#pragma once

#include "platform/swiftui/View.h"

#include <functional>
#include <string>

namespace mirrolet::platform::swiftui {

enum class ButtonStyle { bordered, borderedProminent };
enum class KeyboardShortcut { none, cancelAction, defaultAction };

/// A push button. Its keyboard shortcut (Escape, or Return and Enter) works wherever the focus is in the
/// window.
class Button : public Modifiable<Button> {
  public:
    Button(std::string label, std::function<void()> action)
        : title(std::move(label)), pressed(std::move(action)) {}

    [[nodiscard]] Button buttonStyle(ButtonStyle value) const;
    [[nodiscard]] Button keyboardShortcut(KeyboardShortcut value) const;
    [[nodiscard]] View body() const;

  private:
    std::string title;
    std::function<void()> pressed;
    ButtonStyle style = ButtonStyle::bordered;
    KeyboardShortcut shortcut = KeyboardShortcut::none;
};

} // namespace mirrolet::platform::swiftui
