#pragma once

#include "platform/swiftui/View.h"

#include <vector>

namespace mirrolet::platform::swiftui {

/// Views below one another, centred.
class VStack : public Modifiable<VStack> {
  public:
    VStack(double spacing, std::vector<View> content) : gap(spacing), children(std::move(content)) {}
    [[nodiscard]] View body() const;

  private:
    double gap;
    std::vector<View> children;
};

/// Views beside one another, vertically centred. As a row of a form the first one takes the spare room.
class HStack : public Modifiable<HStack> {
  public:
    HStack(double spacing, std::vector<View> content) : gap(spacing), children(std::move(content)) {}
    [[nodiscard]] View body() const;

  private:
    double gap;
    std::vector<View> children;
};

} // namespace mirrolet::platform::swiftui
