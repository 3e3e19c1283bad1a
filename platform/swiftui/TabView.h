#pragma once

#include "platform/swiftui/View.h"

#include <string>
#include <vector>

namespace mirrolet::platform::swiftui {

/// A group of pages, one of which is shown. Each page has a tab with a symbol and a label. A click on the tab
/// shows the page.
class TabView : public Modifiable<TabView> {
  public:
    struct Tab {
        std::string label;
        std::string systemImage;
        View content;
    };

    explicit TabView(std::vector<Tab> tabs) : pages(std::move(tabs)) {}
    [[nodiscard]] View body() const;

  private:
    std::vector<Tab> pages;
};

} // namespace mirrolet::platform::swiftui
