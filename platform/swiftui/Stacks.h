#pragma once

#include "platform/swiftui/View.h"

#include <vector>

namespace mirrolet::platform::swiftui {

/// A column of views, each of them centred.
class VStack : public Modifiable<VStack> {
  public:
    VStack(double spacing, std::vector<View> content) : gap(spacing), children(std::move(content)) {}
    [[nodiscard]] View body() const;

  private:
    double gap;
    std::vector<View> children;
};

/// A row of views, each of them vertically centred. In a form the first view takes the spare width.
class HStack : public Modifiable<HStack> {
  public:
    HStack(double spacing, std::vector<View> content) : gap(spacing), children(std::move(content)) {}
    [[nodiscard]] View body() const;

  private:
    double gap;
    std::vector<View> children;
};

} // namespace mirrolet::platform::swiftui
