#pragma once

#include "platform/swiftui/Binding.h"
#include "platform/swiftui/View.h"

#include <memory>
#include <string>
#include <vector>

namespace mirrolet::platform {
class NSImage;
}

namespace mirrolet::platform::swiftui {

/// A scrolled list of check boxes, each with a picture and a label. Rows that are not on screen cost nothing,
/// so a list may hold thousands.
class List : public Modifiable<List> {
  public:
    struct Row {
        std::string id;
        std::string label;
        std::shared_ptr<NSImage> image;
    };
    struct Content {
        /// Called at first, and after each change that `rowChanges` reports.
        std::function<std::vector<Row>()> rows;
        std::vector<Observation> rowChanges;
        std::function<bool(const std::string& id)> isOn;
        std::function<void(const std::string& id, bool isOn)> setOn;
        Observation checkChanges;
        double imageSide = 16;
    };

    List(std::string accessibilityLabel, Content content)
        : name(std::move(accessibilityLabel)), source(std::move(content)) {}
    [[nodiscard]] View body() const;

  private:
    std::string name;
    Content source;
};

} // namespace mirrolet::platform::swiftui
