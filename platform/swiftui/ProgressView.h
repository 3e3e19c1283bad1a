#pragma once

#include "platform/swiftui/View.h"

#include <string>

namespace mirrolet::platform::swiftui {

/// A turning wheel above its label, which is shown during work of unknown length.
class ProgressView : public Modifiable<ProgressView> {
  public:
    explicit ProgressView(std::string label) : title(std::move(label)) {}
    [[nodiscard]] View body() const;

  private:
    std::string title;
};

} // namespace mirrolet::platform::swiftui
