#pragma once

#include "platform/swiftui/View.h"

#include <string>

namespace mirrolet::platform::swiftui {

/// Something is going on, of unknown length: a turning wheel over its label.
class ProgressView : public Modifiable<ProgressView> {
  public:
    explicit ProgressView(std::string label) : title(std::move(label)) {}
    [[nodiscard]] View body() const;

  private:
    std::string title;
};

} // namespace mirrolet::platform::swiftui
