#pragma once

#include "platform/swiftui/Binding.h"
#include "platform/swiftui/View.h"

#include <string>

namespace mirrolet::platform::swiftui {

/// One line of text to type. The placeholder is shown while the line is empty.
class TextField : public Modifiable<TextField> {
  public:
    TextField(std::string placeholder, Binding<std::string> text)
        : prompt(std::move(placeholder)), value(std::move(text)) {}
    [[nodiscard]] View body() const;

  private:
    std::string prompt;
    Binding<std::string> value;
};

} // namespace mirrolet::platform::swiftui
