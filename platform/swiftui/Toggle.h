#pragma once

#include "platform/swiftui/Binding.h"
#include "platform/swiftui/View.h"

#include <string>

namespace mirrolet::platform::swiftui {

/// A switch with a label.
class Toggle : public Modifiable<Toggle> {
  public:
    Toggle(std::string label, Binding<bool> isOn) : title(std::move(label)), value(std::move(isOn)) {}
    [[nodiscard]] View body() const;

  private:
    std::string title;
    Binding<bool> value;
};

} // namespace mirrolet::platform::swiftui
